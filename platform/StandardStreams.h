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
    /// A stream that was closed when the program started gets a placeholder that fails every read and write,
    /// so that no file opened later takes its number. Standard input becomes empty, for this process and its
    /// children. A child that read the terminal would take keys meant for the shell, would be stopped in the
    /// background, or would consume the input of a calling script.
    static void prepare();

    /// Writes all of the text. Throws `SystemError` when the stream is closed, full or a broken pipe.
    static void writeOutput(std::string_view text);
    /// Writes all of the text to standard error. A failure is ignored, as there is nowhere to report it.
    static void writeError(std::string_view text) noexcept;

    /// The width in columns of the terminal on standard error. None when it is no terminal, or when its width
    /// is unknown.
    static std::optional<std::size_t> errorTerminalWidth();
    /// Whether this process may draw on standard error: it is a terminal, and this process is in its
    /// foreground process group.
    static bool errorTerminalIsOurs();
};

} // namespace stackreel
