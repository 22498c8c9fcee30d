#include "tests/support/ScopedWorkingDirectory.h"

#include <system_error>

namespace stackreel
{

ScopedWorkingDirectory::ScopedWorkingDirectory(const std::filesystem::path& directory)
    : m_before(std::filesystem::current_path())
{
    std::filesystem::current_path(directory);
}

ScopedWorkingDirectory::~ScopedWorkingDirectory()
{
    std::error_code ignored;
    std::filesystem::current_path(m_before, ignored);
}

} // namespace stackreel
