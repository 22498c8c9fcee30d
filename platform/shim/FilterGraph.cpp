#include "platform/shim/FilterGraph.h"

#include <regex>

namespace stackreel::shim
{

namespace
{

const std::string reset = ",setpts=PTS-STARTPTS";

} // namespace

// A half of 675 lines has 338 lines of chroma in 4:2:0, and two halves 676, where the stacked picture has
// 675. FFmpeg 5.1 writes the last line behind the end of its memory and crashes, at 1080 × 1350 always.
// Halves in 4:4:4 fit, and the chroma is subsampled when they are one picture.
std::string withFullChroma(const std::string& graph)
{
    static const std::regex toOddHeight("scale=[0-9]+:[0-9]*[13579]:flags=bicubic(?=[,;\\[])");
    if (graph.find("vstack") == std::string::npos)
        return graph;
    return std::regex_replace(graph, toOddHeight, "$&,format=yuv444p");
}

// `-2` gives an even height, and `force_original_aspect_ratio` then changes both sides again: 352 × 288
// becomes 960 × 785, which x264 refuses. A picture more than 960 times as wide as high gets no height at all.
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
