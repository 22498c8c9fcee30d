#pragma once

#include <signal.h>

#include <atomic>
#include <stop_token>
#include <thread>

namespace stackreel
{

/// Turns the requests to end this process that arrive as signals (interrupt, terminate, hang-up, quit) into a
/// stop request that running operations see, so that they can clean up. A signal that the parent had this
/// process ignore, as `nohup` does, stays ignored.
///
/// Construct it in `main` before any other thread exists: it blocks the signals for the thread that
/// constructs it and for those started from then on, and receives them on a thread of its own. Children are
/// not affected. A broken pipe is reported as a write error from then on, and children can be waited for even
/// if the parent ignored them.
class TerminationSignals
{
public:
    TerminationSignals();
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

    /// Fires at the first signal.
    std::stop_token stopToken() const { return m_source.get_token(); }
    /// The number of the first signal that arrived, 0 before. Any thread.
    int received() const { return m_received; }
    /// Stops receiving, and gives the number of the first signal that arrived, 0 for none. Unlike `received`
    /// it misses none that was sent before the call. Signals that arrive later have no effect. For the thread
    /// that constructed the object.
    int finish();

private:
    void receive();
    void record(int signal);

    sigset_t m_awaited{};
    std::stop_source m_source;
    std::atomic<int> m_received{0};
    std::atomic<bool> m_ended{false};
    std::thread m_thread;
};

} // namespace stackreel
