#include "cli/FactsText.h"

#include "model/SourceFacts.h"

#include <nlohmann/json.hpp>

namespace stackreel
{

std::string FactsText::lines(const MediaInfo& media)
{
    std::string text = "Frame   " + SourceFacts::frame(media) + "\n";
    text += "Video   " + SourceFacts::video(media) + "\n";
    text += "Length  " + SourceFacts::duration(media.duration) + "\n";
    if (media.audioCodec)
        text += "Audio   " + SourceFacts::upperCase(*media.audioCodec) + "\n";
    return text;
}

std::string FactsText::json(const MediaInfo& media)
{
    nlohmann::ordered_json object;
    object["width"] = media.width;
    object["height"] = media.height;
    object["rotation"] = media.rotation;
    object["duration"] = media.duration;
    object["videoCodec"] = media.videoCodec;
    object["audioCodec"] = nullptr;
    if (media.audioCodec)
        object["audioCodec"] = *media.audioCodec;
    object["displayAspect"] = media.displayAspect();
    return object.dump(2) + "\n";
}

} // namespace stackreel
