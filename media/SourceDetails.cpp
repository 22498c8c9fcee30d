#include "media/SourceDetails.h"

#include "media/ProbeNumbers.h"

#include <utility>

namespace stackreel
{

namespace
{

std::optional<std::string> stated(const std::optional<std::string>& tag)
{
    return tag == "unknown" ? std::nullopt : tag;
}

std::optional<std::string> tagOf(const ProbeStream& stream, const std::string& name)
{
    if (!stream.tags)
        return std::nullopt;
    const auto tag = stream.tags->find(name);
    return tag == stream.tags->end() ? std::nullopt : std::optional(tag->second);
}

/// The value of a fraction such as "30000/1001".
std::optional<double> rateIn(std::string_view fraction)
{
    const std::size_t bar = fraction.find('/');
    if (bar == std::string_view::npos)
        return std::nullopt;
    const auto pictures = parseDecimal(fraction.substr(0, bar));
    const auto seconds = parseDecimal(fraction.substr(bar + 1));
    if (!pictures || !seconds || *pictures <= 0 || *seconds <= 0)
        return std::nullopt;
    return *pictures / *seconds;
}

AudioTrack trackOf(const ProbeStream& stream)
{
    // "und" is the code for an undetermined language.
    auto language = tagOf(stream, "language");
    if (language == "und")
        language.reset();
    return {.codec = stream.codecName,
            .channels = stream.details.channels,
            .layout = stated(stream.details.channelLayout),
            .language = std::move(language),
            .title = tagOf(stream, "title")};
}

} // namespace

SourceDetails SourceDetails::of(const ProbeDocument& document)
{
    SourceDetails details;
    for (const ProbeStream& stream : document.streams)
        if (stream.codecType == "audio")
            details.audioTracks.push_back(trackOf(stream));
    const ProbeStream* video = document.firstStream("video");
    if (video == nullptr)
        return details;
    const ProbeStreamDetails& picture = video->details;
    details.frameRate = picture.averageFrameRate ? rateIn(*picture.averageFrameRate) : std::nullopt;
    details.colour = {.matrix = stated(picture.colourMatrix),
                      .primaries = stated(picture.colourPrimaries),
                      .transfer = stated(picture.colourTransfer),
                      .range = stated(picture.colourRange)};
    return details;
}

} // namespace stackreel
