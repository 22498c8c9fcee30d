#pragma once

#include "media/ProbeDocument.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace stackreel
{

/// A sound stream of a source. Every value is empty where the file does not state it.
struct AudioTrack {
    std::optional<std::string> codec;
    std::optional<std::int64_t> channels;
    std::optional<std::string> layout;   ///< the name of the channel layout, such as "stereo"
    std::optional<std::string> language; ///< as stored, usually three letters
    std::optional<std::string> title;

    bool operator==(const AudioTrack&) const = default;
};

/// The colour tags of a picture by FFmpeg's names. Empty where the file does not state them.
struct ColourTags {
    std::optional<std::string> matrix;
    std::optional<std::string> primaries;
    std::optional<std::string> transfer;
    std::optional<std::string> range; ///< "tv" for limited, "pc" for full

    bool operator==(const ColourTags&) const = default;
};

/// What a report says about a source beyond the `MediaInfo` that the exports need.
struct SourceDetails {
    std::optional<double> frameRate; ///< pictures per second on average; above 0
    ColourTags colour;               ///< of the first picture stream
    std::vector<AudioTrack> audioTracks;

    /// Pure.
    static SourceDetails of(const ProbeDocument& document);

    bool operator==(const SourceDetails&) const = default;
};

} // namespace stackreel
