#pragma once

#include "system/RunningChildren.h"

#include <signal.h>

#include <atomic>
#include <chrono>
#include <optional>
#include <stop_token>
#include <thread>

namespace stackreel
{

/// Turns the signals that ask this process to end (SIGINT, SIGTERM, SIGHUP, SIGQUIT) into a stop request, so
/// that running operations can clean up. A signal that the parent process set to be ignored, as `nohup` does,
/// stays ignored.
///
/// Construct it in `main` before any other thread exists: it blocks the signals for the constructing thread
/// and all threads started later, and receives them on a thread of its own. Children do not inherit these
/// settings (`ChildProcess::launch`). It also ignores SIGPIPE, so that a broken pipe is a write error, and
/// resets SIGCHLD, so that children can be waited for even if the parent process ignored it.
class TerminationSignals
{
public:
    /// If the process still runs when `patience` has passed since the first signal, it exits with 128 and the
    /// number of the signal, for example because a slow disk blocks its main thread. `CleanupProcess` then
    /// cleans up. Throws `SystemError` when the thread cannot be started.
    explicit TerminationSignals(std::chrono::milliseconds patience = 3 * RunningChildren::gracePeriod);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

    /// A stop is requested when the first signal arrives.
    std::stop_token stopToken() const { return m_source.get_token(); }
    /// A stop is requested when the second signal arrives.
    std::stop_token repeatToken() const { return m_repeatSource.get_token(); }
    /// Whether a signal has arrived, also one that has not requested a stop yet. When a signal is sent to a
    /// group of processes and ends a child, this is true before the end of the child is known. False while no
    /// object of this class exists. Call it on the thread that constructed the object.
    static bool haveArrived();
    /// The number of the first signal that arrived; 0 if none has arrived. Any thread.
    int received() const { return m_received; }
    /// Stops receiving, and returns the number of the first signal that arrived, or 0 if none has. Unlike
    /// `received`, it also counts a signal that was sent before this call and is still pending. Signals that
    /// arrive later have no effect. Call it on the thread that constructed the object.
    int finish();

private:
    bool hasArrived();
    void receive();
    std::optional<int> next();
    void record(int signal);

    sigset_t m_awaited{};
    std::chrono::milliseconds m_patience;
    std::chrono::steady_clock::time_point m_deadline = std::chrono::steady_clock::time_point::max();
    std::stop_source m_source;
    std::stop_source m_repeatSource;
    std::atomic<int> m_received{0};
    std::atomic<bool> m_ended{false};
    std::atomic<unsigned> m_wakeUps{0};
    std::thread m_thread;
};

} // namespace stackreel
