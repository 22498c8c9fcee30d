#pragma once

#include "framing/CropRegion.h"
#include "framing/ExportCommand.h"
#include "framing/ExportSettings.h"
#include "media/MediaInfo.h"

#include <filesystem>

namespace stackreel
{

/// Everything an export depends on.
struct ExportRequest {
    std::filesystem::path input;  ///< the source video; absolute
    std::filesystem::path output; ///< the file to write; absolute
    MediaInfo media;              ///< the facts of `input`
    CropRegion top;               ///< what the upper half shows
    CropRegion bottom;            ///< what the lower half shows
    ExportSettings settings;
    double trimStart = 0; ///< seconds
    double trimEnd = 0;   ///< seconds
};

/// Writes the command line of an export. Pure; cannot fail; the regions keep the invariant of `CropRegion`.
struct ExportCommandBuilder {
    static ExportCommand build(const ExportRequest& request);

    /// Whether the export carries sound: it is wanted, and the source has it.
    static bool carriesAudio(const ExportRequest& request);
};

} // namespace stackreel
