#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace stackreel
{

/// The three standard streams of a command-line program. All may be called from any thread; text is bytes.
struct StandardStreams {
    /// Makes the streams safe to use; call it first in `main`, before any file is opened.
    ///
    /// A stream the program was started without gets a stand-in that cannot be used, so that no file opened
    /// later takes its number. Standard input becomes empty, for this process and its children: a child that
    /// read the terminal would take keys meant for the shell, stop a job in the background, or swallow the
    /// list a calling script is reading.
    static void prepare();

    /// Writes all of the text. Throws `SystemError` when the stream is closed, full or a broken pipe.
    static void writeOutput(std::string_view text);
    /// The same to standard error, where a failure has nobody left to be told to and is ignored.
    static void writeError(std::string_view text) noexcept;

    /// The width in columns of the terminal that standard error is; none when it is no terminal, or does not
    /// tell.
    static std::optional<std::size_t> errorTerminalWidth();
    /// Whether this process may draw on the terminal that standard error is: it is one, and this process was
    /// not sent to the background of it.
    static bool errorTerminalIsOurs();
};

} // namespace stackreel
