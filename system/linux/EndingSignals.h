#pragma once

#include <signal.h>

#include <array>

namespace stackreel
{

/// The signals that ask a process to end.
inline constexpr std::array endingSignals{SIGINT, SIGTERM, SIGHUP, SIGQUIT};

/// Whether this process ignores the signal. The program itself never ignores one of `endingSignals`, so the
/// setting was inherited from the parent process, such as `nohup`.
inline bool isIgnored(int signal)
{
    struct sigaction current = {};
    return ::sigaction(signal, nullptr, &current) == 0 && current.sa_handler == SIG_IGN;
}

} // namespace stackreel
