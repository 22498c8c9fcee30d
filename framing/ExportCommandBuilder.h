#pragma once

#include "framing/CropRegion.h"
#include "framing/ExportCommand.h"
#include "framing/ExportSettings.h"
#include "media/MediaInfo.h"

#include <cstdint>
#include <filesystem>

namespace stackreel
{

/// All inputs of an export.
struct ExportRequest {
    std::filesystem::path input;  ///< the source video; absolute
    std::filesystem::path output; ///< the file to write; absolute
    MediaInfo media;              ///< the facts of `input`
    CropRegion top;               ///< the crop shown in the upper half
    CropRegion bottom;            ///< the crop shown in the lower half
    ExportSettings settings;
    double trimStart = 0; ///< seconds
    double trimEnd = 0;   ///< seconds
    /// The sound stream of the source, counted from 0. For another than the first, `media` has the codec of
    /// that stream.
    std::int64_t audioTrack = 0;

    bool operator==(const ExportRequest&) const = default;
};

/// Builds the command line of an export. Pure; cannot fail if the regions lie inside the frame
/// (`CropRegion`).
struct ExportCommandBuilder {
    static ExportCommand build(const ExportRequest& request);

    /// Whether the export has sound: the settings include it and the source has it.
    static bool carriesAudio(const ExportRequest& request);
};

} // namespace stackreel
