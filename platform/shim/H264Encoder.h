#pragma once

#include <optional>
#include <string_view>

namespace stackreel::shim
{

/// The H.264 encoders the substitution knows, in order of preference.
enum class H264Encoder { videoToolbox, x264, openH264 };

/// The preferred encoder among those FFmpeg names in the text it prints for `-encoders`. An encoder counts
/// only where its whole name stands in the name column of a video line: `libx264rgb`, or a description that
/// mentions libx264, is no encoder. Lines of any other shape are passed over; a text without a known encoder
/// gives nothing.
std::optional<H264Encoder> preferredEncoder(std::string_view listing);

} // namespace stackreel::shim
