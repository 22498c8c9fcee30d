#include "cli/FactsText.h"

#include "model/SourceFacts.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace stackreel
{

namespace
{

using Json = nlohmann::ordered_json;

template <typename Value>
Json nullable(const std::optional<Value>& value)
{
    return value ? Json(*value) : Json(nullptr);
}

Json colourObject(const ColourTags& colour)
{
    return {{"matrix", nullable(colour.matrix)},
            {"primaries", nullable(colour.primaries)},
            {"transfer", nullable(colour.transfer)},
            {"range", nullable(colour.range)}};
}

Json trackList(const std::vector<AudioTrack>& tracks)
{
    Json list = Json::array();
    for (const AudioTrack& track : tracks)
        list.push_back({{"number", list.size() + 1},
                        {"codec", nullable(track.codec)},
                        {"channels", nullable(track.channels)},
                        {"layout", nullable(track.layout)},
                        {"language", nullable(track.language)},
                        {"title", nullable(track.title)}});
    return list;
}

/// A language as usual, and nothing that a terminal would interpret.
bool isLanguageCode(const std::string& language)
{
    const auto isLetter = [](char letter) { return letter >= 'a' && letter <= 'z'; };
    return language != "und" && std::all_of(language.begin(), language.end(), isLetter);
}

std::string trackLines(const std::vector<AudioTrack>& tracks)
{
    std::string text;
    for (std::size_t index = 0; index < tracks.size(); ++index) {
        const AudioTrack& track = tracks[index];
        text += "Audio " + std::to_string(index + 1) + " " +
                SourceFacts::upperCase(track.codec.value_or("unknown"));
        if (track.channels)
            text +=
                ", " + std::to_string(*track.channels) + (*track.channels == 1 ? " channel" : " channels");
        if (track.language && isLanguageCode(*track.language))
            text += ", " + *track.language;
        text += "\n";
    }
    return text;
}

} // namespace

std::string FactsText::lines(const MediaInfo& media, const SourceDetails& details)
{
    std::string text = "Frame   " + SourceFacts::frame(media) + "\n";
    text += "Video   " + SourceFacts::video(media) + "\n";
    text += "Length  " + SourceFacts::duration(media.duration) + "\n";
    if (details.audioTracks.size() > 1)
        text += trackLines(details.audioTracks);
    else if (media.audioCodec)
        text += "Audio   " + SourceFacts::upperCase(*media.audioCodec) + "\n";
    return text;
}

std::string FactsText::json(const MediaInfo& media, const SourceDetails& details)
{
    Json object;
    object["width"] = media.width;
    object["height"] = media.height;
    object["rotation"] = media.rotation;
    object["duration"] = media.duration;
    object["videoCodec"] = media.videoCodec;
    object["audioCodec"] = nullable(media.audioCodec);
    object["displayAspect"] = media.displayAspect();
    object["frameRate"] = nullable(details.frameRate);
    object["colour"] = colourObject(details.colour);
    object["audioTracks"] = trackList(details.audioTracks);
    return object.dump(2) + "\n";
}

} // namespace stackreel
