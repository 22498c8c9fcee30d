#pragma once

#include <optional>
#include <string>

namespace stackreel::shim
{

/// Keeps full chroma until the pictures are stacked: in a graph with `vstack`, inserts `format=yuv444p` after
/// each `scale=W:H:flags=bicubic` whose height H is odd. Returns any other graph unchanged.
std::string withFullChroma(const std::string& graph);

/// Makes the sides of every picture even: replaces `scale=W:-2:force_original_aspect_ratio=decrease`, with an
/// even W, by a scale to W and the nearest even height, at least 2. Does not change other filters.
std::string withEvenSides(const std::string& filters);

/// Whether the graph makes time stamps start at 0 by `setpts=PTS-STARTPTS`.
bool resetsTimeStamps(const std::string& graph);

/// Replaces each `setpts=PTS-STARTPTS` by `trim=duration=LENGTH`. Without a length, removes each `setpts`
/// that is not the first filter of its chain.
std::string withTrim(const std::string& graph, const std::optional<std::string>& length);

} // namespace stackreel::shim
