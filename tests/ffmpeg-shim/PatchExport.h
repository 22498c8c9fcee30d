#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace stackreel::shim
{

/// The filter graph of an export that puts the upper and the lower half of the source on top of each other,
/// each at 320 pixels by `halfHeight`.
std::string stackedHalves(int width, int height, int halfHeight);

/// The arguments of an export of the first 0.3 seconds.
std::vector<std::string> exportArguments(const std::filesystem::path& file, const std::string& graph,
                                         const std::filesystem::path& result);

} // namespace stackreel::shim
