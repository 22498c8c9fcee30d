#include "system/UnblockedSignals.h"

#include "system/linux/EndingSignals.h"

namespace stackreel
{

UnblockedSignals::UnblockedSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : endingSignals)
        sigaddset(&signals, signal);
    pthread_sigmask(SIG_UNBLOCK, &signals, &m_before);
}

UnblockedSignals::~UnblockedSignals()
{
    pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
}

} // namespace stackreel
