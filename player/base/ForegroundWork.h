#pragma once

#include <chrono>
#include <stop_token>

namespace stackreel
{

/// Stands for work that somebody looks at the screen for, such as bringing up a frame; others put theirs
/// off as long as any such object lives. Any thread.
class ForegroundWork
{
public:
    ForegroundWork();
    ForegroundWork(const ForegroundWork&) = delete;
    ForegroundWork& operator=(const ForegroundWork&) = delete;
    ~ForegroundWork();
};

/// Waits while there is such work, at most for `patience`, which becomes shorter by the time waited: what
/// never ends must not hold up everything else. Returns early when `stop` fires.
void waitForForegroundWork(const std::stop_token& stop, std::chrono::nanoseconds& patience);

} // namespace stackreel
