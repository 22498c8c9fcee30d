#include "app/Shutdown.h"

#include "model/AppModel.h"
#include "model/ExportShutdown.h"
#include "model/TaskHandle.h"
#include "platform/RunningChildren.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <cstdlib>
#include <memory>
#include <vector>

namespace stackreel
{

namespace
{

constexpr std::chrono::milliseconds pollInterval{20};

using Tasks = std::vector<std::shared_ptr<TaskHandle>>;

void cancel(const Tasks& tasks)
{
    for (const auto& task : tasks)
        task->cancel();
}

/// Waits for the loads, and for all other children.
void waitForLoads(const AppModel& model, QDeadlineTimer deadline)
{
    QTimer poll;
    poll.start(pollInterval);
    const auto isBusy = [&] { return !model.unfinishedLoads().empty() || RunningChildren::count() > 0; };
    while (isBusy() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
}

} // namespace

void Shutdown::run(AppModel& model, std::chrono::milliseconds gracePeriod)
{
    QTimer killTimer;
    killTimer.setSingleShot(true);
    QObject::connect(&killTimer, &QTimer::timeout, [] { RunningChildren::kill(); });
    killTimer.start(gracePeriod);
    // Exit even if a child cannot be killed because it hangs in a system call. Waiting for it would never
    // end.
    QTimer exitTimer;
    exitTimer.setSingleShot(true);
    QObject::connect(&exitTimer, &QTimer::timeout, [] { std::_Exit(EXIT_FAILURE); });
    exitTimer.start(2 * gracePeriod);

    // Cancel the exports before ending the children. Otherwise an export whose child ends would report a
    // failure.
    const auto exports = model.unfinishedExports();
    cancel(exports);
    cancel(model.unfinishedLoads());
    RunningChildren::end();
    for (const auto& task : exports)
        ExportShutdown::endExport(task);
    waitForLoads(model, QDeadlineTimer(gracePeriod + gracePeriod / 2));
}

} // namespace stackreel
