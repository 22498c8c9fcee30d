#include "media/WorkerThread.h"

#include "system/StartThread.h"

#include <QCoreApplication>
#include <QEvent>

namespace stackreel
{

namespace
{

QEvent::Type endedEvent()
{
    static const int type = QEvent::registerEventType();
    return static_cast<QEvent::Type>(type);
}

} // namespace

ThreadCompletion::~ThreadCompletion()
{
    if (m_thread.joinable())
        m_thread.join();
}

void ThreadCompletion::start(std::function<void()> work, std::coroutine_handle<> continuation)
{
    m_continuation = continuation;
    // Created before the thread starts, so that the thread needs no memory to report its end.
    auto ended = std::make_unique<QEvent>(endedEvent());
    m_thread = startThread([this, work = std::move(work), ended = std::move(ended)]() mutable {
        work();
        QCoreApplication::postEvent(this, ended.release());
    });
}

bool ThreadCompletion::event(QEvent* event)
{
    if (event->type() != endedEvent())
        return QObject::event(event);
    m_thread.join();
    m_continuation.resume();
    return true;
}

} // namespace stackreel
