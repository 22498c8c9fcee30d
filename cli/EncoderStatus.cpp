#include "cli/EncoderStatus.h"

#include "media/ProbeNumbers.h"

#include <algorithm>

namespace stackreel
{

namespace
{

// Status lines are about a hundred characters long.
constexpr std::size_t longestLine = 1024;
// The front makes fewer changes than this.
constexpr std::size_t mostChanges = 64;

/// The value of a field "name=value" at the start of the line or after a space. Spaces before the value are
/// skipped. Empty when the line has no such field.
std::string_view field(std::string_view line, const std::string& name)
{
    std::size_t at = line.find(name + "=");
    while (at != std::string_view::npos && at > 0 && line[at - 1] != ' ')
        at = line.find(name + "=", at + 1);
    if (at == std::string_view::npos)
        return {};
    line.remove_prefix(at + name.size() + 1);
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    return line.substr(0, line.find(' '));
}

/// Parses a time such as "00:01:02.50" into seconds. Before the first frame the time may be negative; it then
/// counts as 0.
std::optional<double> clockSeconds(std::string_view text)
{
    const bool negative = text.starts_with('-');
    if (negative)
        text.remove_prefix(1);
    const auto first = text.find(':');
    const auto second = text.rfind(':');
    if (first == second)
        return std::nullopt;
    const auto hours = parseInteger(text.substr(0, first));
    const auto minutes = parseInteger(text.substr(first + 1, second - first - 1));
    const auto seconds = parseDecimal(text.substr(second + 1));
    if (!hours || !minutes || !seconds || *hours < 0 || *minutes < 0 || *seconds < 0)
        return std::nullopt;
    return negative ? 0.0
                    : static_cast<double>(*hours) * 3600 + static_cast<double>(*minutes) * 60 + *seconds;
}

std::optional<double> parseSpeed(std::string_view text)
{
    if (!text.ends_with('x'))
        return std::nullopt;
    const auto speed = parseDecimal(text.substr(0, text.size() - 1));
    return speed && *speed > 0 ? speed : std::nullopt;
}

} // namespace

std::optional<EncoderStatus> EncoderStatus::parse(std::string_view line)
{
    if (!line.starts_with("frame="))
        return std::nullopt;
    const auto seconds = clockSeconds(field(line, "time"));
    if (!seconds)
        return std::nullopt;
    return EncoderStatus{.seconds = *seconds,
                         .frames = parseInteger(field(line, "frame")),
                         .speed = parseSpeed(field(line, "speed"))};
}

void EncoderStatusReader::feed(std::string_view appended)
{
    while (!appended.empty()) {
        const std::size_t end = appended.find_first_of("\r\n");
        const std::string_view piece = appended.substr(0, end);
        m_unfinishedLine += piece.substr(0, longestLine - m_unfinishedLine.size());
        if (end == std::string_view::npos)
            return;
        readLine(m_unfinishedLine);
        m_unfinishedLine.clear();
        appended.remove_prefix(end + 1);
    }
}

void EncoderStatusReader::readLine(std::string_view line)
{
    if (const auto status = EncoderStatus::parse(line))
        m_latest = status;
    else if (auto change = FrontChange::parse(line); change && m_changes.size() < mostChanges)
        m_changes.push_back(std::move(*change));
}

} // namespace stackreel
