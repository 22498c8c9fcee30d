#pragma once

#include "player/GstQueuePlayer.h"
#include "player/PlayerLooper.h"

#include <cstdint>
#include <memory>

namespace stackreel
{

/// The hold on one loop of a player.
class GstPlayerLooper : public PlayerLooper
{
public:
    GstPlayerLooper(std::shared_ptr<GstQueuePlayer> player, std::uint64_t number)
        : m_player(std::move(player)), m_number(number)
    {
    }
    GstPlayerLooper(const GstPlayerLooper&) = delete;
    GstPlayerLooper& operator=(const GstPlayerLooper&) = delete;
    ~GstPlayerLooper() override { m_player->stopRepeating(m_number); }

    void disableLooping() override { m_player->stopRepeating(m_number); }

private:
    std::shared_ptr<GstQueuePlayer> m_player;
    std::uint64_t m_number;
};

} // namespace stackreel
