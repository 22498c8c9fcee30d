#pragma once

#include <exception>
#include <string>

namespace stackreel
{

/// A command that failed, for the user and for programs.
struct Failure {
    int status = 1;        ///< the exit status: 2 for wrong usage, otherwise 1
    std::string code;      ///< one of the codes in docs/export-events.schema.json
    std::string sentence;  ///< UTF-8 except for the bytes of a path in it
    std::string toolLines; ///< the last lines of the tool that failed; may be empty
    std::string hint;      ///< which command shows the help, for wrong usage; otherwise empty

    /// The failure that an exception stands for. It is a cancellation, whatever the exception, once a signal
    /// that asks the program to end has arrived: a tool that the signal ended, too, has failed only because
    /// of it. Main thread.
    static Failure of(const std::exception_ptr& error);
    /// The text for standard error, without a final line feed and without control characters.
    std::string text() const;
};

} // namespace stackreel
