#pragma once

#include "system/TerminationSignals.h"

#include <QTimer>

#include <functional>
#include <stop_token>

namespace stackreel
{

/// Kills the tools that do not end when they are asked to: `RunningChildren::gracePeriod` after the first
/// signal, or at once at the second. Needs a `QCoreApplication`; main thread.
class ToolDeadline
{
public:
    explicit ToolDeadline(const TerminationSignals& signals);

private:
    QTimer m_timer;
    std::stop_callback<std::function<void()>> m_first;
    std::stop_callback<std::function<void()>> m_second;
};

} // namespace stackreel
