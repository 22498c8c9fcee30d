#pragma once

#include "media/MediaInfo.h"

#include <string>

namespace stackreel
{

/// A video's facts as `probe` prints them, UTF-8, with a final line feed. Pure.
struct FactsText {
    /// One line per fact, in the words of the window: Frame, Video, Length, and Audio where there is some.
    static std::string lines(const MediaInfo& media);
    /// One JSON object. Sizes are the coded ones; `audioCodec` is null without sound, and a number that is
    /// not finite is null.
    static std::string json(const MediaInfo& media);
};

} // namespace stackreel
