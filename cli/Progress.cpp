#include "cli/Progress.h"

#include "framing/Decimal.h"
#include "model/SourceFacts.h"

#include <algorithm>
#include <cmath>

namespace stackreel
{

namespace
{

constexpr std::size_t narrowestBar = 10;
constexpr std::size_t detailsWidth = 22;
constexpr double fastestShown = 10'000;
constexpr double longestShown = 100 * 3600;

std::string details(const Progress& progress, const std::string& separator)
{
    std::string text;
    if (progress.speed && *progress.speed < fastestShown)
        text += separator + fixedDecimal(*progress.speed, *progress.speed < 10 ? 2 : 0) + "x";
    if (progress.secondsLeft && *progress.secondsLeft < longestShown)
        text += separator + SourceFacts::duration(std::ceil(*progress.secondsLeft)) + " left";
    return text;
}

} // namespace

std::string Progress::line() const
{
    return std::to_string(percent) + " %" + details(*this, ", ");
}

std::string Progress::bar(std::size_t columns) const
{
    const std::string number = std::to_string(percent);
    const std::string start = std::string(3 - std::min<std::size_t>(number.size(), 3), ' ') + number + " %";
    // The details have a fixed width, so that the width of the bar does not change.
    std::string end = details(*this, "  ").substr(0, detailsWidth);
    end.resize(detailsWidth, ' ');
    const std::size_t around = start.size() + end.size() + std::string(" []").size();
    if (columns < around + narrowestBar)
        return line().substr(0, columns);

    const std::size_t width = columns - around;
    const std::size_t filled = width * static_cast<std::size_t>(percent) / 100;
    return start + " [" + std::string(filled, '#') + std::string(width - filled, '-') + "]" + end;
}

const Progress& ProgressEstimate::update(const EncoderStatus& status)
{
    const double done = m_length > 0 ? std::clamp(status.seconds / m_length, 0.0, 1.0) : 0.0;
    m_current.percent = std::max(m_current.percent, static_cast<int>(std::floor(done * 100)));
    m_current.speed = status.speed;
    const double left = m_length - status.seconds;
    m_current.secondsLeft = status.speed && left > 0 ? std::optional(left / *status.speed) : std::nullopt;
    return m_current;
}

} // namespace stackreel
