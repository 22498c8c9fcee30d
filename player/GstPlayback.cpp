#include "player/GstPlayback.h"

#include "player/GstPlayerLooper.h"
#include "player/GstQueuePlayer.h"
#include "player/PlayerItem.h"

namespace stackreel
{

std::shared_ptr<QueuePlayer> GstPlayback::makePlayer()
{
    return std::make_shared<GstQueuePlayer>(m_makeSoundSink);
}

std::unique_ptr<PlayerLooper> GstPlayback::makeLooper(const std::shared_ptr<QueuePlayer>& player,
                                                      const PlayerItem& templateItem, MediaTimeRange range)
{
    // The player was made above.
    auto own = std::static_pointer_cast<GstQueuePlayer>(player);
    const std::uint64_t number = own->loop(templateItem.file, range);
    return std::make_unique<GstPlayerLooper>(std::move(own), number);
}

} // namespace stackreel
