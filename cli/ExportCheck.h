#pragma once

#include "framing/ExportCommandBuilder.h"
#include "framing/PixelSize.h"
#include "media/ProbeDocument.h"

#include <cstdint>
#include <optional>

namespace stackreel
{

/// What a finished export has to be.
struct ExportExpectation {
    PixelSize size;
    bool audio = false;
    double lengthSeconds = 0;
    /// Whether the picture has to last for the whole length. Not so for a source that tells its length only
    /// as a whole, of which sound may be the longest part.
    bool pictureLasts = true;

    /// What follows from a request and the report on its source.
    static ExportExpectation of(const ExportRequest& request, const ProbeDocument& source);
};

/// Compares the report on a finished file with what was asked for, and throws `CliError` with the difference
/// when there is one.
///
/// Lengths may differ by half a second, by half of an export shorter than one second, and by two pictures
/// more: a source need not have a picture just where a cut is. `frames`, the number of pictures in the file,
/// tells how long one is shown; without it that is taken for nothing. Pure.
void checkExport(const ProbeDocument& report, const ExportExpectation& expected,
                 std::optional<std::int64_t> frames);

} // namespace stackreel
