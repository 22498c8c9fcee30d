#pragma once

#include <QCoroTask>

#include <functional>
#include <memory>
#include <stop_token>

class QObject;

namespace stackreel
{

/// Asynchronous work on the main thread that has no result and never fails. Destroying the handle does not
/// cancel the work.
class TaskHandle
{
public:
    using Body = std::function<QCoro::Task<>(std::stop_token)>;

    /// Starts `body` from the event loop, after this call has returned, unless `context` is destroyed before.
    /// A task that is cancelled before it begins still begins, with a stop already requested. `body` must not
    /// throw, and must check after each `co_await` whether the objects that it uses still exist.
    static std::shared_ptr<TaskHandle> start(QObject& context, Body body);

    /// Requests the task to stop. The work ends when it notices the request. Further calls have no effect.
    void cancel() { m_stop.request_stop(); }
    bool isCancelled() const { return m_stop.stop_requested(); }
    /// Whether the work has ended or can no longer begin.
    bool hasEnded() const { return m_work.expired(); }

private:
    std::stop_source m_stop;
    std::weak_ptr<void> m_work; ///< expires when the work has ended
};

} // namespace stackreel
