#pragma once

#include <string>

namespace stackreel::shim
{

/// A filter graph that stacks pictures of an odd height, made fit for FFmpeg: each `scale=W:H:flags=bicubic`
/// to an odd height gets `,format=yuv444p` behind it. A graph without `vstack`, or without such a height,
/// stays as it is.
std::string withWholeChroma(const std::string& graph);

} // namespace stackreel::shim
