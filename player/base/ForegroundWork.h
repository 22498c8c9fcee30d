#pragma once

#include <chrono>
#include <stop_token>

namespace stackreel
{

/// Work that the user is waiting for, such as preparing a frame. Other work waits while such an object
/// exists. Any thread.
class ForegroundWork
{
public:
    ForegroundWork();
    ForegroundWork(const ForegroundWork&) = delete;
    ForegroundWork& operator=(const ForegroundWork&) = delete;
    ~ForegroundWork();
};

/// Waits while there is such work, at most for `patience`, which is reduced by the time waited, so that work
/// that never ends does not block everything else. Returns early when `stop` fires.
void waitForForegroundWork(const std::stop_token& stop, std::chrono::nanoseconds& patience);

} // namespace stackreel
