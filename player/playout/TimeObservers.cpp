#include "player/playout/TimeObservers.h"

#include "player/base/Nanoseconds.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>

#include <algorithm>

namespace stackreel
{

/// The events to the main thread are empty: the reports are kept under the lock.
class TimeObservers::Context : public QObject
{
public:
    explicit Context(TimeObservers& observers) : m_observers(observers) {}

private:
    void customEvent(QEvent*) override
    {
        // An observer may close the observers, which destroys this object.
        const QPointer<Context> self(this);
        while (self && m_observers.deliverNext()) {
        }
    }

    TimeObservers& m_observers;
};

TimeObservers::TimeObservers() : m_context(std::make_unique<Context>(*this)) {}

TimeObservers::~TimeObservers() = default;

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
    std::shared_ptr<const Observer> observer; // released outside the lock
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
    for (auto& [token, entry] : m_entries) {
        entry.nextCall = now + entry.interval;
        report(entry, time, jump);
    }
}

void TimeObservers::reportProgress(MediaTime time, std::uint64_t jump, Clock::Instant now)
{
    const std::lock_guard lock(m_mutex);
    for (auto& [token, entry] : m_entries) {
        if (entry.nextCall > now)
            continue;
        // After a late call the interval still counts from the time it was due, unless a whole one was
        // missed.
        entry.nextCall += entry.interval;
        if (entry.nextCall <= now)
            entry.nextCall = now + entry.interval;
        report(entry, time, jump);
    }
}

Clock::Instant TimeObservers::nextCall() const
{
    const std::lock_guard lock(m_mutex);
    Clock::Instant next = Clock::Instant::max();
    for (const auto& [token, entry] : m_entries)
        next = std::min(next, entry.nextCall);
    return next;
}

/// With the lock held.
void TimeObservers::report(Entry& entry, MediaTime time, std::uint64_t jump)
{
    entry.time = time;
    entry.jump = jump;
    entry.pending = true;
    if (m_posted || !m_context)
        return;
    m_posted = true;
    QCoreApplication::postEvent(m_context.get(), new QEvent(QEvent::User));
}

/// False when nothing is pending.
bool TimeObservers::deliverNext()
{
    std::shared_ptr<const Observer> observer;
    MediaTime time;
    {
        const std::lock_guard lock(m_mutex);
        const auto next = std::find_if(m_entries.begin(), m_entries.end(),
                                       [](const auto& entry) { return entry.second.pending; });
        m_posted = next != m_entries.end();
        if (!m_posted)
            return false;
        next->second.pending = false;
        if (next->second.jump != m_expectedJump)
            return true;
        observer = next->second.observer;
        time = next->second.time;
    }
    (*observer)(time);
    return true;
}

} // namespace stackreel
