#include "cli/ProgressDisplay.h"

#include "system/StandardStreams.h"

#include <QObject>

#include <algorithm>

namespace stackreel
{

namespace
{

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto readingInterval = 200ms;
constexpr auto longestInterval = 5s;
constexpr std::size_t widestBar = 78;
// The terminal echoes "^C" after the bar when the user interrupts the program. These columns stay free for
// it, so that the echo does not wrap to the next line.
constexpr std::size_t echoColumns = 3;

} // namespace

bool ProgressSchedule::isDue(int percent, Time now)
{
    const bool isLate = now >= m_lastTime + longestInterval;
    if (percent < m_lastPercent + m_step && !(isLate && (m_repeats || percent != m_lastPercent)))
        return false;
    m_lastPercent = percent;
    m_lastTime = now;
    return true;
}

ProgressDisplay::ProgressDisplay(double lengthSeconds, ProgressStyle style)
    : m_style(std::move(style)),
      m_estimate(lengthSeconds),
      m_schedule(m_style.report ? ProgressSchedule::reports(Clock::now())
                                : ProgressSchedule::plainLines(Clock::now()))
{
    // A quiet display also reads from the start, because only the last part of a long text can be read.
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
        readStatus();
        show();
    });
    m_timer.start(readingInterval);
}

ProgressDisplay::~ProgressDisplay()
{
    clearBar();
}

void ProgressDisplay::finish()
{
    m_timer.stop();
    clearBar();
    readStatus();
    if (m_style.report && !m_style.quiet)
        report();
}

void ProgressDisplay::readStatus()
{
    m_reader.feed(m_text.readAppended());
    if (m_reader.latest())
        m_estimate.update(*m_reader.latest());
}

void ProgressDisplay::show()
{
    if (m_style.quiet)
        return;
    if (m_style.report)
        return report();
    const Progress& progress = m_estimate.current();
    if (const auto width = StandardStreams::errorTerminalWidth())
        drawBar(std::min(*width - std::min(*width, echoColumns), widestBar));
    else if (m_schedule.isDue(progress.percent, Clock::now()))
        StandardStreams::writeError(progress.line() + "\n");
}

void ProgressDisplay::report()
{
    if (m_schedule.isDue(m_estimate.current().percent, Clock::now()))
        m_style.report(m_estimate.current());
}

void ProgressDisplay::drawBar(std::size_t columns)
{
    if (!StandardStreams::canDrawOnErrorTerminal())
        return;
    // Only a carriage return and spaces are used: they work on every terminal, whichever control sequences it
    // supports.
    std::string bar = m_estimate.current().bar(columns);
    bar.resize(columns, ' ');
    bar.insert(0, 1, '\r');
    if (bar == m_drawn)
        return;
    StandardStreams::writeError(bar);
    m_drawn = bar;
}

void ProgressDisplay::clearBar()
{
    if (m_drawn.empty())
        return;
    std::fill(m_drawn.begin() + 1, m_drawn.end(), ' ');
    m_drawn.append(echoColumns - 1, ' ').push_back('\r');
    StandardStreams::writeError(m_drawn);
    m_drawn.clear();
}

} // namespace stackreel
