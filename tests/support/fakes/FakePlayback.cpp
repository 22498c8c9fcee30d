#include "tests/support/fakes/FakePlayback.h"

#include "player/PlayerItem.h"

#include <stdexcept>
#include <utility>

namespace stackreel
{

std::shared_ptr<QueuePlayer> FakePlayback::makePlayer()
{
    if (std::exchange(nextPlayerFails, false))
        throw std::runtime_error("No thread can be started.");
    m_players.push_back(std::make_shared<FakeQueuePlayer>(m_journal, static_cast<int>(m_players.size()) + 1));
    m_journal->note("make " + player().name());
    return m_players.back();
}

std::unique_ptr<PlayerLooper> FakePlayback::makeLooper(const std::shared_ptr<QueuePlayer>& player,
                                                       const PlayerItem& templateItem, MediaTimeRange range)
{
    const auto& on = dynamic_cast<const FakeQueuePlayer&>(*player);
    m_loops.push_back(
        std::make_shared<FakeLoop>(FakeLoop{.player = &on, .file = templateItem.file, .range = range}));
    auto looper =
        std::make_unique<FakePlayerLooper>(m_journal, static_cast<int>(m_loops.size()), m_loops.back());
    m_journal->note("make " + looper->name() + " on " + on.name() + " for " + templateItem.file.string() +
                    " from " + described(range.start) + " for " + described(range.duration) +
                    (m_lastLooper.expired() ? "" : " beside the one before"));
    m_lastLooper = looper->life();
    return looper;
}

} // namespace stackreel
