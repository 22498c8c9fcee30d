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
    // It counts if the condition was true once, even if it is false again when the loop ends.
    bool held = condition();
    while (!held && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        held = condition();
    }
    // Delete the objects passed to `deleteLater`, because no event loop is running that would do it.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return held;
}

void runPendingEvents()
{
    constexpr int rounds = 20;
    for (int round = 0; round < rounds; ++round) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

} // namespace stackreel
