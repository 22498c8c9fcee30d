#include "cli/ProgressDisplay.h"

#include "platform/StandardStreams.h"

#include <QObject>

#include <algorithm>

namespace stackreel
{

namespace
{

using namespace std::chrono_literals;

constexpr auto readingInterval = 200ms;
constexpr auto plainLineInterval = 5s;
constexpr int plainLinePercent = 10;
constexpr std::size_t widestBar = 78;
// The terminal shows "^C" behind the bar when the user ends the program, on the same line as long as there is
// room.
constexpr std::size_t roomForKeys = 3;

} // namespace

bool PlainLinePace::isDue(int percent, Time now)
{
    if (percent == m_lastPercent)
        return false;
    if (percent < m_lastPercent + plainLinePercent && now < m_lastTime + plainLineInterval)
        return false;
    m_lastPercent = percent;
    m_lastTime = now;
    return true;
}

ProgressDisplay::ProgressDisplay(double lengthSeconds, bool quiet)
    : m_estimate(lengthSeconds), m_pace(PlainLinePace::Time::clock::now())
{
    if (quiet)
        return;
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
        readAlong();
        show();
    });
    m_timer.start(readingInterval);
}

ProgressDisplay::~ProgressDisplay()
{
    clearBar();
}

std::optional<EncoderStatus> ProgressDisplay::finish()
{
    m_timer.stop();
    clearBar();
    readAlong();
    return m_reader.latest();
}

void ProgressDisplay::readAlong()
{
    m_reader.feed(m_text.takeAppended());
    if (m_reader.latest())
        m_estimate.update(*m_reader.latest());
}

void ProgressDisplay::show()
{
    const Progress& progress = m_estimate.current();
    if (const auto width = StandardStreams::errorTerminalWidth())
        drawBar(std::min(*width - std::min(*width, roomForKeys), widestBar));
    else if (m_pace.isDue(progress.percent, PlainLinePace::Time::clock::now()))
        StandardStreams::writeError(progress.line() + "\n");
}

void ProgressDisplay::drawBar(std::size_t columns)
{
    if (!StandardStreams::errorTerminalIsOurs())
        return;
    // The carriage return and the blanks do without knowing what the terminal can do.
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
    m_drawn.append(roomForKeys - 1, ' ').push_back('\r');
    StandardStreams::writeError(m_drawn);
    m_drawn.clear();
}

} // namespace stackreel
