#pragma once

#include "player/base/Clock.h"
#include "player/base/MediaTime.h"

#include <QObject>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>

namespace stackreel
{

/// Reports the playhead from the player's thread to observers on the main thread, through its event loop.
/// While the main thread is busy, only the latest time waits for it.
class TimeObservers
{
public:
    using Token = std::uint64_t;
    using Observer = std::function<void(MediaTime)>;

    TimeObservers();
    TimeObservers(const TimeObservers&) = delete;
    TimeObservers& operator=(const TimeObservers&) = delete;
    ~TimeObservers();

    /// Main thread. `observer` is called every `interval` while playing, but not more often than every
    /// millisecond, and after each jump, until it is removed.
    Token add(MediaTime interval, Observer observer);
    /// Main thread. A token that names no observer is ignored.
    void remove(Token token);
    /// Main thread. No observer is called any more.
    void close();
    /// Main thread. Drops reports until those of the jump with this number come, so that a playhead that was
    /// just moved does not go back for a moment.
    void expectJump(std::uint64_t jump);

    /// Any thread. The playhead jumped: all observers are called, and again one interval after `now`.
    void reportJump(MediaTime time, std::uint64_t jump, Clock::Instant now);
    /// Any thread. The playhead moved on: the observers that are due are called.
    void reportProgress(MediaTime time, std::uint64_t jump, Clock::Instant now);
    /// Any thread. When the next observer is due; far in the future without observers.
    Clock::Instant nextCall() const;

private:
    struct Entry {
        Clock::Instant::duration interval;
        std::shared_ptr<const Observer> observer;
        Clock::Instant nextCall = {};
        MediaTime time;
        std::uint64_t jump = 0;
        bool pending = false; ///< reported, and not delivered yet
    };
    class Context;

    void report(Entry& entry, MediaTime time, std::uint64_t jump);
    bool deliverNext();

    mutable std::mutex m_mutex;
    std::map<Token, Entry> m_entries;
    Token m_lastToken = 0;
    std::uint64_t m_expectedJump = 0;
    bool m_posted = false;              ///< an event for pending reports was posted
    std::unique_ptr<QObject> m_context; ///< lives on the main thread; its events are removed with it
};

} // namespace stackreel
