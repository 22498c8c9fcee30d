#include "cli/AbsolutePath.h"

#include "cli/CliError.h"

namespace stackreel
{

std::filesystem::path absolutePath(const std::filesystem::path& path)
{
    std::error_code error;
    auto absolute = std::filesystem::absolute(path, error);
    if (error)
        throw CliError("“" + path.string() +
                       "” cannot be found from here, as this folder is gone. Change to another one.");
    return absolute;
}

} // namespace stackreel
