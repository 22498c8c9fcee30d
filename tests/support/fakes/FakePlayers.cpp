#include "tests/support/fakes/FakePlayers.h"

#include <stdexcept>
#include <utility>

namespace stackreel
{

std::shared_ptr<PreviewPlayer> FakePlayers::make()
{
    if (std::exchange(nextFails, false))
        throw std::runtime_error("No thread can be started.");
    m_players.push_back(
        std::make_shared<FakePreviewPlayer>(m_journal, static_cast<int>(m_players.size()) + 1));
    m_journal->note("make " + last().name());
    return m_players.back();
}

} // namespace stackreel
