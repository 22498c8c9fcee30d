#include "system/SystemError.h"

namespace stackreel
{

SystemError::SystemError(int errorNumber, const std::string& action, const std::filesystem::path& path)
    : std::system_error(errorNumber, std::system_category()),
      m_description("Could not " + action + " “" + path.string() + "”: " + code().message() + ".")
{
}

SystemError::SystemError(int errorNumber, const std::string& action)
    : std::system_error(errorNumber, std::system_category()),
      m_description("Could not " + action + ": " + code().message() + ".")
{
}

} // namespace stackreel
