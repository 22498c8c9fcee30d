#pragma once

#include "media/MediaInfo.h"

#include <string>

namespace stackreel
{

/// A source's facts as texts for the user, UTF-8, the same in every locale. Pure.
struct SourceFacts {
    /// The size of the picture as displayed: "1920 × 1080".
    static std::string frame(const MediaInfo& media);
    /// The video codec's name in upper case (ASCII letters): "H264".
    static std::string video(const MediaInfo& media);
    /// A codec's name in upper case (ASCII letters): "AAC".
    static std::string upperCase(std::string name);
    /// A length rounded to whole seconds, halves up, as minutes and two digits of seconds: "62:05". "Unknown"
    /// when it is not finite or not above 0.
    static std::string duration(double seconds);
};

} // namespace stackreel
