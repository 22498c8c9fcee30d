#pragma once

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
    double lengthSeconds = 0;
    /// Whether the length of the video stream is checked, instead of that of the whole file. False when the
    /// source states only the length of the whole file, because its audio may be longer than its video.
    bool checksVideoLength = true;

    /// The properties that follow from a request and the report on its source.
    static ExportExpectation of(const ExportRequest& request, const ProbeDocument& source);
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
