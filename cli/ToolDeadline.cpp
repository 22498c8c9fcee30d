#include "cli/ToolDeadline.h"

#include "platform/RunningChildren.h"

#include <QTimer>

namespace stackreel
{

ToolDeadline::ToolDeadline(const TerminationSignals& signals)
    : m_first(signals.stopToken(),
              [this] {
                  QMetaObject::invokeMethod(
                      &m_context,
                      [this] {
                          QTimer::singleShot(RunningChildren::gracePeriod, &m_context,
                                             [] { RunningChildren::kill(); });
                      },
                      Qt::QueuedConnection);
              }),
      m_second(signals.repeatToken(), [] { RunningChildren::kill(); })
{
}

} // namespace stackreel
