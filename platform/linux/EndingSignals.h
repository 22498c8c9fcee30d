#pragma once

#include <signal.h>

#include <array>

namespace stackreel
{

/// The signals that ask a process to end.
inline constexpr std::array endingSignals{SIGINT, SIGTERM, SIGHUP, SIGQUIT};

/// Whether this process ignores the signal. The program never ignores one of `endingSignals` itself, so its
/// parent process did, as `nohup` does.
inline bool isIgnored(int signal)
{
    struct sigaction current = {};
    return ::sigaction(signal, nullptr, &current) == 0 && current.sa_handler == SIG_IGN;
}

} // namespace stackreel
