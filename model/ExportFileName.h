#pragma once

#include <filesystem>

namespace stackreel
{

/// The default file name of an export: the source's file name without its last extension, followed by
/// "-vertical.mp4".
std::filesystem::path exportFileName(const std::filesystem::path& source);

} // namespace stackreel
