#pragma once

#include <QCoroTask>

#include <coroutine>
#include <exception>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>
#include <variant>

namespace stackreel
{

/// A task that the test ends explicitly: with a result, with a failure, or not at all. The coroutine that
/// awaits it resumes within that call. The destructor makes a task fail that has not ended, because a
/// coroutine that never resumes leaks its frame.
template <typename T>
class ManualTask
{
public:
    ManualTask() = default;
    ManualTask(ManualTask&&) noexcept = default;
    ManualTask& operator=(ManualTask&&) = delete;
    ~ManualTask()
    {
        if (m_state && !m_state->outcome)
            fail(std::logic_error("still pending"));
    }

    QCoro::Task<T> task() { return awaited(m_state); }

    bool hasEnded() const { return m_state->outcome.has_value(); }
    void complete(T value) { end(std::move(value)); }
    template <typename Error>
    void fail(const Error& error)
    {
        failWith(std::make_exception_ptr(error));
    }
    void failWith(std::exception_ptr error) { end(std::move(error)); }

private:
    using Outcome = std::variant<T, std::exception_ptr>;
    struct State {
        std::optional<Outcome> outcome;
        std::coroutine_handle<> waiting;
    };
    struct Awaiter {
        std::shared_ptr<State> state;

        bool await_ready() const noexcept { return state->outcome.has_value(); }
        void await_suspend(std::coroutine_handle<> continuation) { state->waiting = continuation; }
        T await_resume()
        {
            if (const auto* failure = std::get_if<std::exception_ptr>(&*state->outcome))
                std::rethrow_exception(*failure);
            return std::get<T>(*state->outcome);
        }
    };

    static QCoro::Task<T> awaited(std::shared_ptr<State> state)
    {
        const Awaiter awaiter = {state};
        co_return co_await Awaiter(awaiter);
    }

    void end(Outcome outcome)
    {
        const auto state = m_state;
        state->outcome.emplace(std::move(outcome));
        if (const auto waiting = std::exchange(state->waiting, nullptr))
            waiting.resume();
    }

    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace stackreel
