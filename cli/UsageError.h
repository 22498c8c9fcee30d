#pragma once

#include <stdexcept>
#include <string>

namespace stackreel
{

/// An error in the command line itself. `what()` says what is wrong, `hint()` which command shows the help.
class UsageError : public std::runtime_error
{
public:
    /// `command` is the name of the command the user gave, empty when there is none.
    UsageError(const std::string& message, const std::string& command)
        : std::runtime_error(message),
          m_hint("Try 'stackreel-cli " + command + (command.empty() ? "" : " ") + "--help'.")
    {
    }

    const std::string& hint() const { return m_hint; }

private:
    std::string m_hint;
};

} // namespace stackreel
