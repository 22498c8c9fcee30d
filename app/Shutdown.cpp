#include "app/Shutdown.h"

#include "model/AppModel.h"
#include "model/ExportShutdown.h"
#include "model/TaskHandle.h"
#include "platform/RunningChildren.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <cstdlib>

namespace stackreel
{

namespace
{

constexpr std::chrono::milliseconds lookEvery{20};

/// A load cannot be cancelled, but fails when its child ends.
bool isLoading(const AppModel& model)
{
    return model.phase().kind() == Phase::Kind::preparing || RunningChildren::count() > 0;
}

void awaitLoads(const AppModel& model, QDeadlineTimer deadline)
{
    QTimer look;
    look.start(lookEvery);
    while (isLoading(model) && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
}

} // namespace

void Shutdown::run(AppModel& model, std::chrono::milliseconds patience)
{
    QTimer impatience;
    impatience.setSingleShot(true);
    QObject::connect(&impatience, &QTimer::timeout, [] { RunningChildren::kill(); });
    impatience.start(patience);
    // A child that cannot even be killed hangs in the system; waiting for it would hang, too.
    QTimer surrender;
    surrender.setSingleShot(true);
    QObject::connect(&surrender, &QTimer::timeout, [] { std::_Exit(EXIT_FAILURE); });
    surrender.start(2 * patience);

    // The exports first: a child that ends before its export was cancelled looks like one that failed.
    const auto exports = model.unfinishedExports();
    for (const auto& task : exports)
        task->cancel();
    RunningChildren::end();
    for (const auto& task : exports)
        ExportShutdown::endExport(task);
    awaitLoads(model, QDeadlineTimer(patience + patience / 2));
}

} // namespace stackreel
