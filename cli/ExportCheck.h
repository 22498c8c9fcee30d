#pragma once

#include "cli/SourceContent.h"
#include "framing/ExportCommandBuilder.h"
#include "framing/PixelSize.h"
#include "media/ProbeDocument.h"

#include <cstdint>
#include <optional>

namespace stackreel
{

/// The properties that a finished export must have.
struct ExportExpectation {
    PixelSize size;
    bool audio = false;
    bool audioMayBeMissing = false; ///< where `audio` is set: whether an export without sound is right, too
    double lengthSeconds = 0;

    /// The properties that follow from a request.
    static ExportExpectation of(const ExportRequest& request);
    /// The same for a source with this content in the range. Its sound may end before the range, so that the
    /// export has none. Its picture may end before the range does, so that the export is shorter. That is
    /// accepted only where the source's data reach its stated end, because otherwise it was cut short.
    ExportExpectation within(const ExportRequest& request, const SourceContent& content) const;
};

/// Compares the report on a finished file with the expected properties. Throws `ExportError` with the first
/// difference. Pure.
///
/// The length may differ by half a second (for an export shorter than one second: by half of its length) plus
/// the duration of two frames, because a cut need not fall on a frame of the source. The duration of a frame
/// is computed from `frames`, the number of frames in the file; if that is unknown, it counts as 0.
void checkExport(const ProbeDocument& report, const ExportExpectation& expected,
                 std::optional<std::int64_t> frames);

} // namespace stackreel
