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
    // What held once counts, even where it does not last.
    bool held = condition();
    while (!held && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        held = condition();
    }
    // Outside of a running event loop nobody else deletes what was left for later.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return held;
}

} // namespace stackreel
