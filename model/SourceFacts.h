#pragma once

#include "media/MediaInfo.h"

#include <string>

namespace stackreel
{

/// The properties of a source as texts for the user, UTF-8, independent of the locale. Pure.
struct SourceFacts {
    /// The size of the picture as displayed: "1920 × 1080".
    static std::string frame(const MediaInfo& media);
    /// The name of the video codec in upper case (ASCII letters only): "H264".
    static std::string video(const MediaInfo& media);
    /// The name of a codec in upper case (ASCII letters only): "AAC".
    static std::string upperCase(std::string name);
    /// A duration in minutes and seconds, rounded to whole seconds (halves up): "62:05". "Unknown" when it is
    /// not finite or not above 0.
    static std::string duration(double seconds);
};

} // namespace stackreel
