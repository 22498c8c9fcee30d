#pragma once

#include "framing/ExportCommandBuilder.h"
#include "framing/PixelSize.h"
#include "media/ProbeDocument.h"
#include "model/SourceContent.h"

#include <QCoroTask>

#include <optional>
#include <stop_token>

namespace stackreel
{

/// The properties that a finished export must have.
struct ExportExpectation {
    PixelSize size;
    bool audio = false;
    bool audioMayBeMissing = false; ///< where `audio` is set: whether an export without sound is right, too
    std::optional<double> lengthSeconds; ///< none where the length of the source is unknown

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
/// counts as 0 if the number of frames is unknown.
void requireExpected(const ProbeDocument& report, const ExportExpectation& expected);

/// Checks the report on a finished file. If its sound or length differs from what the source states, reads
/// what the source holds in the range (`SourceContent::read`), and compares with that. Throws `ExportError`
/// with the first difference, and what that operation and `MediaProbe::report` throw.
QCoro::Task<> checkExport(ExportRequest request, ProbeDocument report, std::stop_token stop);

} // namespace stackreel
