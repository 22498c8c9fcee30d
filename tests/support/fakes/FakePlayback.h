#pragma once

#include "platform/playback/Playback.h"
#include "tests/support/fakes/FakeQueuePlayer.h"
#include "tests/support/fakes/Journal.h"

#include <memory>
#include <vector>

namespace stackreel
{

/// Makes fake players and loopers, numbered from 1, which write what is done with them into the journal. A
/// looper that is made while the one before still lives is noted as being beside it.
class FakePlayback : public Playback
{
public:
    explicit FakePlayback(std::shared_ptr<Journal> journal) : m_journal(std::move(journal)) {}

    /// The player made last. Players are kept, as a window would do for as long as it shows one.
    FakeQueuePlayer& player() const { return *m_players.back(); }
    FakeQueuePlayer& player(std::size_t number) const { return *m_players.at(number - 1); }

    std::shared_ptr<QueuePlayer> makePlayer() override;
    std::unique_ptr<PlayerLooper> makeLooper(const std::shared_ptr<QueuePlayer>& player,
                                             const PlayerItem& templateItem, MediaTimeRange range) override;

private:
    std::shared_ptr<Journal> m_journal;
    std::vector<std::shared_ptr<FakeQueuePlayer>> m_players;
    int m_looperCount = 0;
    std::weak_ptr<const void> m_lastLooper;
};

} // namespace stackreel
