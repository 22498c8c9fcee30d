#pragma once

#include "media/ProcessOutput.h"

#include <filesystem>
#include <string>
#include <vector>

namespace stackreel
{

/// Runs FFmpeg as the product finds it, quietly; gives what it wrote. Throws when it fails.
ProcessOutput runFFmpeg(const std::vector<std::string>& arguments);

/// What a clip of the tests is made of.
struct ClipRecipe {
    int width = 640; ///< displayed pixels
    int height = 360;
    std::string sampleAspect = "1"; ///< width over height of one pixel, as in "4/3"
    std::string rate = "25";
    double seconds = 2;
    int rotation = 0; ///< 0, 90, 180 or 270: how far the stored frames are to be turned against the clock
    bool audio = true;
    /// Whether each frame is one even grey that encodes its number, instead of a picture.
    bool numbered = false;
};

/// Makes a clip that shows upright whatever its rotation.
void makeClip(const std::filesystem::path& file, const ClipRecipe& recipe);

} // namespace stackreel
