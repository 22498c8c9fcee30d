#include "model/ExportQueue.h"

#include "media/CancellationError.h"

#include <QCoroFuture>

#include <utility>

namespace stackreel
{

QCoro::Task<ExportTurn> ExportQueue::takeTurn(std::shared_ptr<ExportQueue> queue, std::stop_token stop)
{
    const auto place = std::make_shared<QPromise<void>>();
    place->start();
    const ExportTurn turn = queue->enter(queue, place);
    if (queue->m_places.front() == place)
        co_return turn;
    const std::stop_callback endWait(stop, [place] { place->finish(); });
    const QFuture<void> waited = place->future();
    co_await waited;
    if (stop.stop_requested())
        throw CancellationError();
    co_return turn;
}

ExportTurn ExportQueue::enter(const std::shared_ptr<ExportQueue>& self, const Place& place)
{
    m_places.push_back(place);
    return {place.get(), [self, place](void*) { self->leave(place); }};
}

void ExportQueue::leave(const Place& place)
{
    const bool hadTurn = m_places.front() == place;
    std::erase(m_places, place);
    if (hadTurn && !m_places.empty())
        m_places.front()->finish();
}

} // namespace stackreel
