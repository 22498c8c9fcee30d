#include "system/Bundle.h"

#include <system_error>

namespace stackreel
{

std::optional<std::filesystem::path> Bundle::resourceDirectory()
{
    std::error_code error;
    const auto executable = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error)
        return std::nullopt;
    auto directory = executable.parent_path().parent_path() / "lib" / "stackreel";
    if (!std::filesystem::is_directory(directory, error))
        return std::nullopt;
    return directory;
}

InfoDictionary Bundle::infoDictionary()
{
    const auto directory = resourceDirectory();
    return directory ? InfoDictionary::read(*directory / "Info.json") : InfoDictionary();
}

} // namespace stackreel
