#pragma once

#include <stdexcept>
#include <string>

namespace stackreel
{

/// An error in the command line itself. `what()` says what is wrong; `hint()` says which command shows the
/// help.
class UsageError : public std::runtime_error
{
public:
    /// `command` is the name of the command that the user gave; empty if the user gave none.
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
