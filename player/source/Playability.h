#pragma once

#include <filesystem>
#include <stop_token>

namespace stackreel
{

/// Whether a file has a video stream that can be decoded. GStreamer's discovery decides; it decodes the
/// beginning of every stream, and one damaged stream makes it fail for all. Where it fails, the file is
/// playable if the player's own pipeline decodes a picture. Blocks for five seconds at most; false when
/// `stop` fires.
bool hasPlayableVideo(const std::filesystem::path& file, const std::stop_token& stop);

} // namespace stackreel
