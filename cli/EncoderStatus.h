#pragma once

#include "cli/FrontChange.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stackreel
{

/// One of the status lines that `ffmpeg` writes to standard error while it encodes.
struct EncoderStatus {
    double seconds = 0;                 ///< length of the output so far; not negative
    std::optional<std::int64_t> frames; ///< frames written so far
    std::optional<double> speed;        ///< seconds of output encoded per second; above 0

    /// Parses a status line, which is given without its line terminator. Returns `std::nullopt` for any other
    /// line. Pure.
    static std::optional<EncoderStatus> parse(std::string_view line);

    bool operator==(const EncoderStatus&) const = default;
};

/// Finds the status lines and the changes of the front in standard error while it grows. It keeps only the
/// start of the unfinished line and a limited number of changes, so its memory use is bounded.
class EncoderStatusReader
{
public:
    /// Adds the text that was appended since the last call, which may begin and end inside a line.
    void feed(std::string_view appended);
    /// The last complete status so far.
    const std::optional<EncoderStatus>& latest() const { return m_latest; }
    /// The changes so far, in the order of their lines.
    const std::vector<FrontChange>& changes() const { return m_changes; }

private:
    void readLine(std::string_view line);

    std::string m_unfinishedLine;
    std::optional<EncoderStatus> m_latest;
    std::vector<FrontChange> m_changes;
};

} // namespace stackreel
