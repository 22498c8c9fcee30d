#include "system/TerminationSignals.h"

#include "system/StartThread.h"
#include "system/linux/EndingSignals.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>

namespace stackreel
{

namespace
{

using namespace std::chrono_literals;

TerminationSignals* existing = nullptr;

} // namespace

TerminationSignals::TerminationSignals(std::chrono::milliseconds patience)
    : m_awaited(blockedSignals()), m_patience(patience)
{
    ::signal(SIGPIPE, SIG_IGN);
    // The parent process may have ignored SIGCHLD, which is inherited through exec. The kernel would then
    // reap the children itself, and waiting for them would fail.
    ::signal(SIGCHLD, SIG_DFL);
    pthread_sigmask(SIG_BLOCK, &m_awaited, nullptr);
    m_thread = startThread([this] { receive(); });
    existing = this;
}

TerminationSignals::~TerminationSignals()
{
    existing = nullptr;
    finish();
}

bool TerminationSignals::haveArrived()
{
    return existing != nullptr && existing->hasArrived();
}

bool TerminationSignals::hasArrived()
{
    sigset_t pending{};
    ::sigpending(&pending);
    for (const int signal : endingSignals)
        if (sigismember(&m_awaited, signal) == 1 && sigismember(&pending, signal) == 1)
            return true;
    if (m_thread.joinable()) {
        // The thread may have taken a signal without recording it yet. It does so before it takes the next.
        const unsigned before = m_wakeUps;
        pthread_kill(m_thread.native_handle(), wakeUpSignal);
        m_wakeUps.wait(before);
    }
    return m_received != 0;
}

int TerminationSignals::finish()
{
    if (!m_thread.joinable())
        return m_received;
    m_ended = true;
    pthread_kill(m_thread.native_handle(), wakeUpSignal);
    m_thread.join();
    // Another signal may have arrived after the thread was woken up to end.
    const timespec noTime{};
    for (int signal = 0; (signal = ::sigtimedwait(&m_awaited, nullptr, &noTime)) > 0;)
        record(signal);
    return m_received;
}

void TerminationSignals::receive()
{
    while (!m_ended) {
        const auto signal = next();
        if (!signal)
            std::_Exit(128 + m_received);
        if (m_received == 0)
            m_deadline = std::chrono::steady_clock::now() + m_patience;
        record(*signal);
    }
}

/// Waits for the next signal. None if there was none until the deadline.
std::optional<int> TerminationSignals::next()
{
    int signal = 0;
    if (m_received == 0 && sigwait(&m_awaited, &signal) == 0)
        return signal;
    do {
        const auto left = m_deadline - std::chrono::steady_clock::now();
        const auto seconds = std::max(std::chrono::floor<std::chrono::seconds>(left), 0s);
        const timespec timeout = {.tv_sec = seconds.count(),
                                  .tv_nsec = std::max(left - seconds, 0ns).count()};
        signal = ::sigtimedwait(&m_awaited, nullptr, &timeout);
    } while (signal < 0 && errno == EINTR);
    return signal < 0 ? std::nullopt : std::optional(signal);
}

void TerminationSignals::record(int signal)
{
    if (signal == wakeUpSignal) {
        ++m_wakeUps;
        m_wakeUps.notify_one();
        return;
    }
    int none = 0;
    const bool isFirst = m_received.compare_exchange_strong(none, signal);
    (isFirst ? m_source : m_repeatSource).request_stop();
}

} // namespace stackreel
