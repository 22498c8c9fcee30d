#pragma once

#include "player/Playback.h"
#include "tests/support/fakes/FakePlayerLooper.h"
#include "tests/support/fakes/FakeQueuePlayer.h"
#include "tests/support/fakes/Journal.h"

#include <memory>
#include <vector>

namespace stackreel
{

/// Creates fake players and loopers, numbered from 1, that write their calls to the journal. If a looper is
/// created while the previous one still exists, the line says so ("beside the one before").
class FakePlayback : public Playback
{
public:
    explicit FakePlayback(std::shared_ptr<Journal> journal) : m_journal(std::move(journal)) {}

    /// The player that was created last. All players are kept alive, as a window keeps the player that it
    /// shows.
    FakeQueuePlayer& player() const { return *m_players.back(); }
    FakeQueuePlayer& player(std::size_t number) const { return *m_players.at(number - 1); }
    const std::vector<std::shared_ptr<FakeQueuePlayer>>& players() const { return m_players; }
    /// The loops of all loopers, in the order in which they were created.
    const std::vector<std::shared_ptr<FakeLoop>>& loops() const { return m_loops; }

    /// Whether the next call of `makePlayer` throws.
    bool nextPlayerFails = false;

    std::shared_ptr<QueuePlayer> makePlayer() override;
    std::unique_ptr<PlayerLooper> makeLooper(const std::shared_ptr<QueuePlayer>& player,
                                             const PlayerItem& templateItem, MediaTimeRange range) override;

private:
    std::shared_ptr<Journal> m_journal;
    std::vector<std::shared_ptr<FakeQueuePlayer>> m_players;
    std::vector<std::shared_ptr<FakeLoop>> m_loops;
    std::weak_ptr<const void> m_lastLooper;
};

} // namespace stackreel
