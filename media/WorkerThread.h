#pragma once

#include <QCoroTask>
#include <QObject>

#include <coroutine>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <type_traits>
#include <utility>

namespace stackreel
{

/// Runs work on a new thread and then resumes a coroutine on the thread that created this object. Only for
/// `onWorkerThread`.
class ThreadCompletion : public QObject
{
public:
    ThreadCompletion() = default;
    ~ThreadCompletion() override;

    /// Runs `work`, which must not throw, on a new thread; afterwards resumes `continuation` from the event
    /// loop of this object's thread. Throws `SystemError` if no thread can be started.
    void start(std::function<void()> work, std::coroutine_handle<> continuation);

    bool event(QEvent* event) override;

private:
    std::thread m_thread;
    std::coroutine_handle<> m_continuation;
};

/// The work and its result. A local variable of the coroutine `onWorkerThread`.
template <typename Work>
class WorkerThreadState
{
public:
    using Result = std::invoke_result_t<Work>;

    explicit WorkerThreadState(Work work) : m_work(std::move(work)) {}
    // `deleteLater`, because `ThreadCompletion::event` is still on the call stack when the resumed coroutine
    // destroys this object.
    ~WorkerThreadState() { m_completion.release()->deleteLater(); }
    WorkerThreadState(const WorkerThreadState&) = delete;
    WorkerThreadState& operator=(const WorkerThreadState&) = delete;

    void start(std::coroutine_handle<> continuation)
    {
        m_completion->start([this] { runWork(); }, continuation);
    }

    Result takeResult()
    {
        if (m_failure)
            std::rethrow_exception(m_failure);
        return std::move(*m_result);
    }

private:
    void runWork() noexcept
    {
        try {
            m_result.emplace(m_work());
        } catch (...) {
            m_failure = std::current_exception();
        }
    }

    Work m_work;
    std::unique_ptr<ThreadCompletion> m_completion = std::make_unique<ThreadCompletion>();
    std::optional<Result> m_result;
    std::exception_ptr m_failure;
};

/// The awaiter of a state, which it does not own. It is a separate type because GCC 12 copies the operand of
/// `co_await`, and a state cannot be copied.
template <typename Work>
struct WorkerThreadAwaiter {
    WorkerThreadState<Work>& state;

    bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> continuation) { state.start(continuation); }
    auto await_resume() { return state.takeResult(); }
};

/// `co_await onWorkerThread(work)` runs blocking work on a thread of its own. It resumes on the awaiting
/// thread, which needs a running event loop, and returns the work's result or throws its exception. The work
/// always runs to its end; to cancel it, pass it a stop token. `work` must return a value.
template <typename Work>
QCoro::Task<std::invoke_result_t<Work>> onWorkerThread(Work work)
{
    WorkerThreadState<Work> state(std::move(work));
    co_return co_await WorkerThreadAwaiter<Work>{state};
}

} // namespace stackreel
