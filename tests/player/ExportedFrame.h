#pragma once

#include "player/base/VideoFrame.h"

#include <filesystem>

namespace stackreel
{

/// The first frame that FFmpeg decodes from a file at a time in seconds, with its orientation applied.
/// `width` and `height` are those of the oriented frame.
VideoFrame exportedFrame(const std::filesystem::path& file, double seconds, int width, int height);

} // namespace stackreel
