#include "system/StateFolder.h"

#include <cstdlib>

namespace stackreel
{

namespace
{

/// The folder that a variable names; the root folder where it names none.
std::filesystem::path folderFromEnvironment(const char* variable)
{
    const char* value = std::getenv(variable);
    const std::filesystem::path folder = value != nullptr ? value : "";
    return folder.is_absolute() ? folder : "/";
}

} // namespace

std::filesystem::path stateFolder()
{
    const std::filesystem::path states = folderFromEnvironment("XDG_STATE_HOME");
    return (states != "/" ? states : folderFromEnvironment("HOME") / ".local" / "state") / "stackreel";
}

} // namespace stackreel
