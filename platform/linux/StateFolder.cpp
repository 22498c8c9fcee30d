#include "platform/StateFolder.h"

#include <cstdlib>

namespace stackreel
{

namespace
{

std::filesystem::path folderIn(const char* variable)
{
    const char* value = std::getenv(variable);
    return value != nullptr ? value : "";
}

} // namespace

std::filesystem::path stateFolder()
{
    const std::filesystem::path states = folderIn("XDG_STATE_HOME");
    return (states.is_absolute() ? states : folderIn("HOME") / ".local" / "state") / "stackreel";
}

} // namespace stackreel
