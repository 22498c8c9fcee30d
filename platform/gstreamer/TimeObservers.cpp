#include "platform/gstreamer/TimeObservers.h"

#include "platform/gstreamer/Nanoseconds.h"

#include <QMetaObject>

#include <algorithm>

namespace stackreel
{

TimeObservers::Token TimeObservers::add(MediaTime interval, Observer observer)
{
    const std::lock_guard lock(m_mutex);
    Entry entry;
    entry.interval = std::chrono::nanoseconds(std::max(toNanoseconds(interval), millisecond));
    entry.observer = std::make_shared<const Observer>(std::move(observer));
    m_entries.emplace(++m_lastToken, std::move(entry));
    return m_lastToken;
}

void TimeObservers::remove(Token token)
{
    std::shared_ptr<const Observer> observer; // goes outside the lock
    const std::lock_guard lock(m_mutex);
    const auto found = m_entries.find(token);
    if (found == m_entries.end())
        return;
    observer = std::move(found->second.observer);
    m_entries.erase(found);
}

void TimeObservers::close()
{
    std::unique_ptr<QObject> context;
    std::map<Token, Entry> entries;
    const std::lock_guard lock(m_mutex);
    context = std::move(m_context);
    entries.swap(m_entries);
}

void TimeObservers::expectJump(std::uint64_t jump)
{
    const std::lock_guard lock(m_mutex);
    m_expectedJump = jump;
}

void TimeObservers::reportJump(MediaTime time, std::uint64_t jump, Clock::Instant now)
{
    const std::lock_guard lock(m_mutex);
    for (auto& [token, entry] : m_entries)
        report(token, entry, time, jump, now);
}

void TimeObservers::reportProgress(MediaTime time, std::uint64_t jump, Clock::Instant now)
{
    const std::lock_guard lock(m_mutex);
    for (auto& [token, entry] : m_entries) {
        if (entry.turn <= now)
            report(token, entry, time, jump, now);
    }
}

Clock::Instant TimeObservers::nextTurn() const
{
    const std::lock_guard lock(m_mutex);
    Clock::Instant next = Clock::Instant::max();
    for (const auto& [token, entry] : m_entries)
        next = std::min(next, entry.turn);
    return next;
}

/// With the lock held.
void TimeObservers::report(Token token, Entry& entry, MediaTime time, std::uint64_t jump, Clock::Instant now)
{
    // The rhythm is kept when a turn comes late, unless it is lost altogether.
    entry.turn += entry.interval;
    if (entry.turn <= now)
        entry.turn = now + entry.interval;
    entry.time = time;
    entry.jump = jump;
    if (entry.posted || !m_context)
        return;
    entry.posted = true;
    QMetaObject::invokeMethod(
        m_context.get(), [this, token] { deliver(token); }, Qt::QueuedConnection);
}

void TimeObservers::deliver(Token token)
{
    std::shared_ptr<const Observer> observer;
    MediaTime time;
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_entries.find(token);
        if (found == m_entries.end())
            return;
        found->second.posted = false;
        if (found->second.jump != m_expectedJump)
            return;
        observer = found->second.observer;
        time = found->second.time;
    }
    (*observer)(time);
}

} // namespace stackreel
