#pragma once

#include <filesystem>
#include <string>
#include <system_error>

namespace stackreel
{

/// The failure of a system call. `code()` returns the errno value. `what()` returns a sentence for the user:
/// what could not be done, with which file, and the system's reason.
class SystemError : public std::system_error
{
public:
    /// `action` completes "Could not …", for example "create the folder"; `errorNumber` is an errno value.
    SystemError(int errorNumber, const std::string& action, const std::filesystem::path& path);
    /// For a system call that does not concern a file.
    SystemError(int errorNumber, const std::string& action);

    const char* what() const noexcept override { return m_description.c_str(); }

private:
    std::string m_description;
};

} // namespace stackreel
