#include "model/TaskHandle.h"

#include <QMetaObject>
#include <QObject>

namespace stackreel
{

namespace
{

// Runs the body. The coroutine frame of this function keeps the body and its captures alive until the body
// has ended.
QCoro::Task<> runBody(TaskHandle::Body body, std::stop_token stop,
                      [[maybe_unused]] std::shared_ptr<void> work)
{
    co_await body(stop);
}

} // namespace

std::shared_ptr<TaskHandle> TaskHandle::start(QObject& context, Body body)
{
    auto handle = std::make_shared<TaskHandle>();
    const auto work = std::make_shared<char>();
    handle->m_work = work;
    QMetaObject::invokeMethod(
        &context,
        [body = std::move(body), stop = handle->m_stop.get_token(), work] { runBody(body, stop, work); },
        Qt::QueuedConnection);
    return handle;
}

} // namespace stackreel
