#pragma once

#include <filesystem>

namespace stackreel
{

/// The path made absolute against the working directory, so that no tool takes it for an option. Throws
/// `CliError` for a relative path where the working directory does not exist any more.
std::filesystem::path absolutePath(const std::filesystem::path& path);

} // namespace stackreel
