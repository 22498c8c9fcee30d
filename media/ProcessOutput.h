#pragma once

#include <cstdint>
#include <string>

namespace stackreel
{

/// What a child process left behind.
struct ProcessOutput {
    std::int32_t status = 0;    ///< exit status; the signal's number for a child that a signal ended
    std::string standardOutput; ///< raw bytes
    std::string standardError;  ///< raw bytes

    /// The last 8 non-empty lines of standard error, joined by line feeds, for showing to the user. UTF-8;
    /// invalid bytes are replaced. A carriage return directly followed by a line feed is one character and
    /// ends no line; nothing is trimmed. Empty when standard error is.
    std::string errorText() const;

    bool operator==(const ProcessOutput&) const = default;
};

} // namespace stackreel
