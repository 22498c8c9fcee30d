#pragma once

#include "model/ExportTurn.h"

#include <QCoroTask>
#include <QPromise>

#include <deque>
#include <memory>
#include <stop_token>

namespace stackreel
{

/// Makes exports run one at a time, in the order of their requests. Main thread.
class ExportQueue
{
public:
    /// Waits until all exports that requested a turn before have ended theirs. Throws `CancellationError`
    /// when the token fires during the wait; if there is no wait, the token is not checked. An export that
    /// has waited resumes from the event loop, never within the call that ends the wait.
    static QCoro::Task<ExportTurn> takeTurn(std::shared_ptr<ExportQueue> queue, std::stop_token stop);

private:
    using Place = std::shared_ptr<QPromise<void>>; ///< finished when the wait is over

    ExportTurn enter(const std::shared_ptr<ExportQueue>& self, const Place& place);
    void leave(const Place& place);

    std::deque<Place> m_places; ///< the first has the turn
};

} // namespace stackreel
