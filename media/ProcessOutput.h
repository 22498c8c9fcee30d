#pragma once

#include <cstdint>
#include <string>

namespace stackreel
{

/// The result of a child process.
struct ProcessOutput {
    std::int32_t status = 0;    ///< exit status, or the signal's number when a signal ended the child
    std::string standardOutput; ///< raw bytes
    std::string standardError;  ///< raw bytes
    bool endedBySignal = false; ///< whether `status` is a signal's number
    /// Whether the temporary folder was full when the child had ended, so that its output may be incomplete.
    bool captureIsFull = false;

    /// The last 8 non-empty lines of standard error, joined by line feeds, for the user. UTF-8; invalid bytes
    /// are replaced. A line ends at a line feed; "\r\n" does not end a line. Lines are not trimmed. Empty
    /// when standard error is empty.
    std::string errorText() const;

    bool operator==(const ProcessOutput&) const = default;
};

} // namespace stackreel
