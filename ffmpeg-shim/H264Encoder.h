#pragma once

#include <optional>
#include <string_view>

namespace stackreel::shim
{

/// The H.264 encoders that can be used, in order of preference.
enum class H264Encoder { videoToolbox, x264, openH264 };

/// The preferred encoder in the list that `ffmpeg -encoders` prints. The whole name has to be in the name
/// column of a video encoder's line: neither `libx264rgb` nor a description that mentions libx264 counts.
/// Lines in any other format are ignored. Returns `std::nullopt` if the list has none of the encoders.
std::optional<H264Encoder> preferredEncoder(std::string_view listing);

} // namespace stackreel::shim
