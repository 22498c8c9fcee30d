#include "ffmpeg-shim/FilterGraph.h"

#include <regex>

namespace stackreel::shim
{

namespace
{

const std::string reset = ",setpts=PTS-STARTPTS";

} // namespace

// In 4:2:0, a half of 675 lines has 338 lines of chroma. Two halves have 676, but the stacked picture has
// only 675. FFmpeg 5.1 writes the last line after the end of the buffer and crashes; at 1080 × 1350 this
// always happens. With 4:4:4 the halves fit. The chroma is subsampled after they are stacked.
std::string withFullChroma(const std::string& graph)
{
    static const std::regex toOddHeight("scale=[0-9]+:[0-9]*[13579]:flags=bicubic(?=[,;\\[])");
    if (graph.find("vstack") == std::string::npos)
        return graph;
    return std::regex_replace(graph, toOddHeight, "$&,format=yuv444p");
}

// `-2` computes an even height, but `force_original_aspect_ratio` then changes both sides again: 352 × 288
// becomes 960 × 785, which x264 rejects. A picture that is more than 960 times as wide as high gets the
// height 0.
std::string withEvenSides(const std::string& filters)
{
    static const std::regex fitted(
        "scale=([0-9]*[02468]):-2:force_original_aspect_ratio=decrease(?=[,;\\[]|$)");
    return std::regex_replace(filters, fitted, "scale=$1:'max(2,2*round($1*ih/iw/2))'");
}

bool resetsTimeStamps(const std::string& graph)
{
    return graph.find(reset) != std::string::npos;
}

std::string withTrim(const std::string& graph, const std::optional<std::string>& length)
{
    std::string result = graph;
    const std::string trim = length ? ",trim=duration=" + *length : "";
    for (std::size_t at = 0; (at = result.find(reset, at)) != std::string::npos; at += trim.size())
        result.replace(at, reset.size(), trim);
    return result;
}

} // namespace stackreel::shim
