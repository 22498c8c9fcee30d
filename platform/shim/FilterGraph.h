#pragma once

#include <optional>
#include <string>

namespace stackreel::shim
{

/// `graph` with full chroma until its pictures are stacked: in a graph with `vstack`, each
/// `scale=W:H:flags=bicubic` to an odd height H is followed by `,format=yuv444p`. Any other graph is
/// unchanged.
std::string withFullChroma(const std::string& graph);

/// `filters` with even sides for every picture: `scale=W:-2:force_original_aspect_ratio=decrease` with an
/// even W becomes a scale to W and the nearest even height, at least 2. Any other filter is unchanged.
std::string withEvenSides(const std::string& filters);

/// Whether the pictures are moved to begin at 0 by `setpts=PTS-STARTPTS`.
bool resetsTimeStamps(const std::string& graph);

/// `graph` with `trim=duration=LENGTH` instead of each `setpts=PTS-STARTPTS`; without a length, a `setpts`
/// that is not the first filter of its chain is removed.
std::string withTrim(const std::string& graph, const std::optional<std::string>& length);

} // namespace stackreel::shim
