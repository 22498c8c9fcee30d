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

/// The timeout for events that must happen. Much longer than any of them takes, because the machine may be
/// busy.
inline constexpr std::chrono::seconds ceiling{60};

/// Runs the event loop until the condition is true, and checks it every few milliseconds. Returns false on
/// timeout.
bool eventually(const std::function<bool()>& condition, std::chrono::milliseconds limit = ceiling);

/// Processes the events that are queued on this thread, then the events that these have queued, and so on for
/// a fixed number of rounds; also deletes the objects passed to `deleteLater`. Use it to check that nothing
/// more happens.
void runPendingEvents();

/// A running task that a test can wait for. Destroying the object does not cancel the task.
template <typename T>
class Awaited
{
public:
    explicit Awaited(QCoro::Task<T> task) { collect(std::move(task), m_outcome); }

    bool hasEnded() const { return !std::holds_alternative<std::monostate>(*m_outcome); }

    /// Waits for the task; returns its result or rethrows its exception. Call it once.
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

/// Runs the event loop until the task has ended; returns its result or rethrows its exception.
template <typename T>
T runToEnd(QCoro::Task<T> task, std::chrono::milliseconds limit = ceiling)
{
    return Awaited<T>(std::move(task)).result(limit);
}

} // namespace stackreel
