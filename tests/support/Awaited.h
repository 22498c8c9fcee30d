#pragma once

#include <QCoroTask>
#include <QEventLoop>

#include <chrono>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>
#include <variant>

namespace stackreel
{

/// How long a test waits for something that must happen. Far more than anything takes, as machines may be
/// busy.
inline constexpr std::chrono::seconds ceiling{60};

/// Runs the event loop until the condition holds, looking every few milliseconds; false when it does not come
/// true below the ceiling.
bool eventually(const std::function<bool()>& condition, std::chrono::milliseconds limit = ceiling);

/// A running task whose end can be asked for and waited for. The task goes on when the object goes.
template <typename T>
class Awaited
{
public:
    explicit Awaited(QCoro::Task<T> task) { collect(std::move(task), m_outcome); }

    bool hasEnded() const { return !std::holds_alternative<std::monostate>(*m_outcome); }

    /// The task's result, once, or what it threw.
    T result(std::chrono::milliseconds limit = ceiling)
    {
        if (!eventually([this] { return hasEnded(); }, limit))
            throw std::logic_error("the task has not ended in time");
        if (const auto* failure = std::get_if<std::exception_ptr>(m_outcome.get()))
            std::rethrow_exception(*failure);
        return std::move(std::get<T>(*m_outcome));
    }

private:
    using Outcome = std::variant<std::monostate, T, std::exception_ptr>;

    static QCoro::Task<> collect(QCoro::Task<T> task, std::shared_ptr<Outcome> outcome)
    {
        try {
            outcome->template emplace<T>(co_await task);
        } catch (...) {
            *outcome = std::current_exception();
        }
    }

    std::shared_ptr<Outcome> m_outcome = std::make_shared<Outcome>();
};

/// Runs the event loop until the task has ended; gives its result or throws what it threw.
template <typename T>
T runToEnd(QCoro::Task<T> task, std::chrono::milliseconds limit = ceiling)
{
    return Awaited<T>(std::move(task)).result(limit);
}

} // namespace stackreel
