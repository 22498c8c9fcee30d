#include "platform/shim/OddPanels.h"

#include <regex>

namespace stackreel::shim
{

// With chroma of half the height, a panel of 675 lines has 338 of it, and two of them 676 where the stacked
// picture has 675: FFmpeg 5.1 writes the last one behind the end of its memory and is ended for it, at 1080 ×
// 1350 always. With chroma in full, the halves fit, and it is halved once they are one picture.
std::string withWholeChroma(const std::string& graph)
{
    static const std::regex toOddHeight("scale=[0-9]+:[0-9]*[13579]:flags=bicubic(?=[,;\\[])");
    if (graph.find("vstack") == std::string::npos)
        return graph;
    return std::regex_replace(graph, toOddHeight, "$&,format=yuv444p");
}

} // namespace stackreel::shim
