#include "player/base/ForegroundWork.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>

namespace stackreel
{

namespace
{

struct Gate {
    std::mutex mutex;
    std::condition_variable_any changed;
    int present = 0;
};

Gate& gate()
{
    // Never destroyed: threads may still wait here when the program ends.
    static Gate& theGate = *new Gate;
    return theGate;
}

} // namespace

ForegroundWork::ForegroundWork()
{
    const std::lock_guard lock(gate().mutex);
    ++gate().present;
}

ForegroundWork::~ForegroundWork()
{
    {
        const std::lock_guard lock(gate().mutex);
        --gate().present;
    }
    gate().changed.notify_all();
}

void waitForForegroundWork(const std::stop_token& stop, std::chrono::nanoseconds& patience)
{
    std::unique_lock lock(gate().mutex);
    if (gate().present == 0)
        return;
    const auto start = std::chrono::steady_clock::now();
    gate().changed.wait_for(lock, stop, patience, [] { return gate().present == 0; });
    const auto waited = std::chrono::steady_clock::now() - start;
    patience = std::max(patience - waited, std::chrono::nanoseconds(0));
}

} // namespace stackreel
