#include "app/Shutdown.h"

#include "model/AppModel.h"
#include "model/ExportShutdown.h"
#include "model/TaskHandle.h"
#include "system/RunningChildren.h"

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

using namespace std::chrono_literals;

constexpr auto pollInterval = 20ms;

using Tasks = std::vector<std::shared_ptr<TaskHandle>>;

void cancel(const Tasks& tasks)
{
    for (const auto& task : tasks)
        task->cancel();
}

/// Waits for all children that are left, and for a moment for the loads. A load without a child leaves
/// nothing behind, and may be blocked by the disk.
void waitForLoads(const AppModel& model, QDeadlineTimer deadline)
{
    QTimer poll;
    poll.start(pollInterval);
    const QDeadlineTimer moment(1s);
    const auto isBusy = [&] {
        return RunningChildren::count() > 0 || (!model.unfinishedLoads().empty() && !moment.hasExpired());
    };
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
