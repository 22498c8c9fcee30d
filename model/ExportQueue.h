#pragma once

#include <QCoroTask>
#include <QPromise>

#include <deque>
#include <memory>
#include <stop_token>

namespace stackreel
{

/// Lets exports run one at a time, in the order in which they asked. Main thread.
class ExportQueue
{
public:
    /// The turn of one export. Destroying it gives the turn to the next.
    using Turn = std::shared_ptr<void>;

    /// Waits until every export that asked before has given up its turn. Throws `CancellationError` when the
    /// token fires during the wait. Without a wait the token is not looked at. An export that has waited
    /// resumes from the event loop, never within the call that ends the wait.
    static QCoro::Task<Turn> takeTurn(std::shared_ptr<ExportQueue> queue, std::stop_token stop);

private:
    using Place = std::shared_ptr<QPromise<void>>; ///< finished when the wait is over

    Turn enter(const std::shared_ptr<ExportQueue>& self, const Place& place);
    void leave(const Place& place);

    std::deque<Place> m_places; ///< the first has the turn
};

} // namespace stackreel
