#pragma once

#include <signal.h>

#include <array>

namespace stackreel
{

/// The signals that ask a process to end.
inline constexpr std::array endingSignals{SIGINT, SIGTERM, SIGHUP, SIGQUIT};

/// The signal by which `TerminationSignals` wakes its thread.
inline constexpr int wakeUpSignal = SIGUSR2;

/// Whether this process ignores the signal. The program itself never ignores one of `endingSignals`, so the
/// setting was inherited from the parent process, such as `nohup`.
inline bool isIgnored(int signal)
{
    struct sigaction current = {};
    return ::sigaction(signal, nullptr, &current) == 0 && current.sa_handler == SIG_IGN;
}

/// The signals that `TerminationSignals` blocks: `wakeUpSignal`, and those of `endingSignals` that this
/// process does not ignore.
inline sigset_t blockedSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, wakeUpSignal);
    for (const int signal : endingSignals)
        if (!isIgnored(signal))
            sigaddset(&signals, signal);
    return signals;
}

} // namespace stackreel
