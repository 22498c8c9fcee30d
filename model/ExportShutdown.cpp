#include "model/ExportShutdown.h"

#include "model/TaskHandle.h"

#include <QCoreApplication>
#include <QEventLoop>

namespace stackreel
{

void ExportShutdown::endExport(const std::shared_ptr<TaskHandle>& task)
{
    if (!task)
        return;
    task->cancel();
    // Call `processEvents`, because `QEventLoop::exec` returns at once if the program is already quitting.
    while (!task->hasEnded())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
}

} // namespace stackreel
