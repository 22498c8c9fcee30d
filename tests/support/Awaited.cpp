#include "tests/support/Awaited.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEvent>
#include <QTimer>

namespace stackreel
{

bool eventually(const std::function<bool()>& condition, std::chrono::milliseconds limit)
{
    QTimer look;
    look.start(std::chrono::milliseconds(2));
    const QDeadlineTimer deadline(limit);
    while (!condition() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    // Outside of a running event loop nobody else deletes what was left for later.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return condition();
}

} // namespace stackreel
