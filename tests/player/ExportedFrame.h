#pragma once

#include "platform/playback/VideoFrame.h"

#include <filesystem>

namespace stackreel
{

/// The first frame that FFmpeg exports of a file from a time on, in seconds, turned upright. The size is the
/// upright picture's.
VideoFrame exportedFrame(const std::filesystem::path& file, double seconds, int width, int height);

} // namespace stackreel
