#pragma once

#include <filesystem>
#include <string>
#include <system_error>

namespace stackreel
{

/// A failed system call, with a sentence the user can read. `code()` carries the errno value, `what()` the
/// sentence: what could not be done, to which file, and the system's reason.
class SystemError : public std::system_error
{
public:
    /// `action` completes "Could not …", for example "create the folder"; `errorNumber` is an errno value.
    SystemError(int errorNumber, const std::string& action, const std::filesystem::path& path);

    const char* what() const noexcept override { return m_description.c_str(); }

private:
    std::string m_description;
};

} // namespace stackreel
