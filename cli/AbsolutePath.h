#pragma once

#include <filesystem>

namespace stackreel
{

/// The path made absolute, relative to the working directory, so that no tool mistakes a name such as "-i"
/// for an option. Throws `CliError` for a relative path when the working directory no longer exists.
std::filesystem::path absolutePath(const std::filesystem::path& path);

} // namespace stackreel
