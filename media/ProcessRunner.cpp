#include "media/ProcessRunner.h"

#include "media/WorkerThread.h"
#include "system/RunningChildren.h"

#include <QTimer>

namespace stackreel
{

QCoro::Task<ProcessOutput> ProcessRunner::run(std::filesystem::path executable,
                                              std::vector<std::string> arguments, std::stop_token stop,
                                              LaunchCallback launched, std::vector<std::string> environment)
{
    ProcessSession session;
    QTimer killTimer;
    killTimer.setSingleShot(true);
    killTimer.setInterval(RunningChildren::gracePeriod);
    QObject::connect(&killTimer, &QTimer::timeout, [&session] { session.kill(); });
    // The timer is started by name: the thread sanitizer cannot see how Qt hands a function object to another
    // thread.
    const std::stop_callback cancelChild(stop, [&] {
        session.cancel();
        QMetaObject::invokeMethod(&killTimer, "start", Qt::QueuedConnection);
    });
    co_return co_await onWorkerThread(
        [&] { return session.run(executable, arguments, launched, environment); });
}

} // namespace stackreel
