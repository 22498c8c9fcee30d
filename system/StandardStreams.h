#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace stackreel
{

/// The three standard streams of a command-line program. Any thread; text is written as bytes.
struct StandardStreams {
    /// Makes the streams safe to use; call it first in `main`, before any file is opened.
    ///
    /// A stream that was closed when the program started gets a placeholder that fails every read and write,
    /// so that no file opened later gets its descriptor. Standard input becomes empty, for this process and
    /// its children: a child that reads the terminal would take keys meant for the shell, would be stopped if
    /// it is in the background, or would consume the input of a calling script.
    static void prepare();

    /// Writes the whole text to standard output. Throws `SystemError` when the stream is closed, the disk is
    /// full or the pipe is broken.
    static void writeOutput(std::string_view text);
    /// Writes the whole text to standard output. A failure is ignored.
    static void tryToWriteOutput(std::string_view text) noexcept;
    /// Writes the whole text to standard error. A failure is ignored, because it cannot be reported anywhere.
    static void writeError(std::string_view text) noexcept;

    /// The width in columns of the terminal on standard error. Returns `std::nullopt` when standard error is
    /// not a terminal, or when the width is unknown.
    static std::optional<std::size_t> errorTerminalWidth();
    /// Whether standard error is a terminal and this process is in the terminal's foreground process group,
    /// and so may draw on it.
    static bool canDrawOnErrorTerminal();
};

} // namespace stackreel
