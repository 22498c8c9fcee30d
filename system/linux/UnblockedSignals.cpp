#include "system/UnblockedSignals.h"

#include "system/linux/EndingSignals.h"

namespace stackreel
{

UnblockedSignals::UnblockedSignals()
{
    const sigset_t signals = blockedSignals();
    pthread_sigmask(SIG_UNBLOCK, &signals, &m_before);
}

UnblockedSignals::~UnblockedSignals()
{
    pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
}

} // namespace stackreel
