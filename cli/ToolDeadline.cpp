#include "cli/ToolDeadline.h"

#include "system/RunningChildren.h"

namespace stackreel
{

// The timer is started by name: the thread sanitizer cannot see how Qt hands a function object to another
// thread.
ToolDeadline::ToolDeadline(const TerminationSignals& signals)
    : m_first(signals.stopToken(),
              [this] { QMetaObject::invokeMethod(&m_timer, "start", Qt::QueuedConnection); }),
      m_second(signals.repeatToken(), [] { RunningChildren::kill(); })
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(RunningChildren::gracePeriod);
    QObject::connect(&m_timer, &QTimer::timeout, [] { RunningChildren::kill(); });
}

} // namespace stackreel
