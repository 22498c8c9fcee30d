#pragma once

#include <QCoroTask>

#include <functional>
#include <memory>
#include <stop_token>

class QObject;

namespace stackreel
{

/// A piece of asynchronous work on the main thread that gives no result and never fails. Letting go of the
/// handle neither cancels nor ends the work.
class TaskHandle
{
public:
    using Body = std::function<QCoro::Task<>(std::stop_token)>;

    /// Starts `body` from the event loop, not within this call, unless `context` is gone by then. A task that
    /// was cancelled before it began begins all the same, with its token fired. `body` catches its own
    /// failures and checks after each `co_await` whether what it writes to still exists.
    static std::shared_ptr<TaskHandle> start(QObject& context, Body body);

    /// Fires the task's stop token; the work ends when it notices. More than once is the same as once.
    void cancel() { m_stop.request_stop(); }
    bool isCancelled() const { return m_stop.stop_requested(); }
    /// Whether nothing of the work is left to be done, because it has ended or can no longer begin.
    bool hasEnded() const { return m_work.expired(); }

private:
    std::stop_source m_stop;
    std::weak_ptr<void> m_work; ///< held by the work until it ends
};

} // namespace stackreel
