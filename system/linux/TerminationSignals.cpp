#include "system/TerminationSignals.h"

#include "system/StartThread.h"
#include "system/linux/EndingSignals.h"

namespace stackreel
{

namespace
{

// Wakes the receiving thread in `finish` and in `hasArrived`.
constexpr int wakeUp = SIGUSR2;

TerminationSignals* existing = nullptr;

sigset_t signalsToAwait()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, wakeUp);
    for (const int signal : endingSignals)
        if (!isIgnored(signal))
            sigaddset(&signals, signal);
    return signals;
}

} // namespace

TerminationSignals::TerminationSignals() : m_awaited(signalsToAwait())
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
        pthread_kill(m_thread.native_handle(), wakeUp);
        m_wakeUps.wait(before);
    }
    return m_received != 0;
}

int TerminationSignals::finish()
{
    if (!m_thread.joinable())
        return m_received;
    m_ended = true;
    pthread_kill(m_thread.native_handle(), wakeUp);
    m_thread.join();
    // Another signal may have arrived after the thread was woken up to end.
    const timespec noTime{};
    for (int signal = 0; (signal = ::sigtimedwait(&m_awaited, nullptr, &noTime)) > 0;)
        record(signal);
    return m_received;
}

void TerminationSignals::receive()
{
    int signal = 0;
    while (!m_ended && sigwait(&m_awaited, &signal) == 0)
        record(signal);
}

void TerminationSignals::record(int signal)
{
    if (signal == wakeUp) {
        ++m_wakeUps;
        m_wakeUps.notify_one();
        return;
    }
    int none = 0;
    const bool isFirst = m_received.compare_exchange_strong(none, signal);
    (isFirst ? m_source : m_repeatSource).request_stop();
}

} // namespace stackreel
