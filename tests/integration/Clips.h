#pragma once

#include "media/ProcessOutput.h"

#include <filesystem>
#include <string>
#include <vector>

namespace stackreel
{

/// Runs the FFmpeg that the product finds, without its log, and returns its output. Throws when it fails.
ProcessOutput runFFmpeg(const std::vector<std::string>& arguments);

/// The parameters of a generated test clip.
struct ClipRecipe {
    int width = 640; ///< displayed pixels
    int height = 360;
    std::string sampleAspect = "1"; ///< width / height of one pixel, for example "4/3"
    std::string rate = "25";
    double seconds = 2;
    int rotation = 0; ///< counterclockwise display rotation of the stored frames: 0, 90, 180 or 270
    bool audio = true;
    /// Whether each frame is a uniform grey that encodes its number, instead of a test pattern.
    bool numbered = false;
};

/// Makes a clip that is displayed upright, whatever its rotation. Its colours are tagged as BT.709, so that
/// an export keeps them.
void makeClip(const std::filesystem::path& file, const ClipRecipe& recipe);

} // namespace stackreel
