#pragma once

#include <filesystem>

namespace stackreel
{

/// The folder for what the program keeps between runs: `stackreel` in XDG_STATE_HOME, or in `~/.local/state`
/// if that is not set to an absolute path. It may not exist yet. Main thread, because it reads the
/// environment.
std::filesystem::path stateFolder();

} // namespace stackreel
