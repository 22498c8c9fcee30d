#pragma once

#include "tests/support/fakes/FakePreviewPlayer.h"
#include "tests/support/fakes/Journal.h"

#include <memory>
#include <vector>

namespace stackreel
{

/// Creates fake players, numbered from 1, that write their calls to the journal.
class FakePlayers
{
public:
    explicit FakePlayers(std::shared_ptr<Journal> journal) : m_journal(std::move(journal)) {}

    /// A new player. Throws when `nextFails` is set.
    std::shared_ptr<PreviewPlayer> make();

    /// The player that was created last. All players are kept alive, as a window keeps the player that it
    /// shows.
    FakePreviewPlayer& last() const { return *m_players.back(); }
    FakePreviewPlayer& at(std::size_t number) const { return *m_players.at(number - 1); }
    const std::vector<std::shared_ptr<FakePreviewPlayer>>& all() const { return m_players; }

    /// Whether the next call of `make` throws.
    bool nextFails = false;

private:
    std::shared_ptr<Journal> m_journal;
    std::vector<std::shared_ptr<FakePreviewPlayer>> m_players;
};

} // namespace stackreel
