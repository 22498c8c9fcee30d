#pragma once

#include <signal.h>

namespace stackreel
{

/// While an object exists, its thread does not block the signals that `TerminationSignals` blocks, so that a
/// program which a library starts meanwhile does not inherit that. A signal that arrives in this short time
/// ends the process at once, and `CleanupProcess` cleans up. Construct and destroy it on the same thread.
class UnblockedSignals
{
public:
    UnblockedSignals();
    ~UnblockedSignals();
    UnblockedSignals(const UnblockedSignals&) = delete;
    UnblockedSignals& operator=(const UnblockedSignals&) = delete;

private:
    sigset_t m_before{};
};

} // namespace stackreel
