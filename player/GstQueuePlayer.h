#pragma once

#include "player/QueuePlayer.h"
#include "player/sound/SoundOutput.h"

#include <cstdint>
#include <filesystem>
#include <memory>

namespace stackreel
{

class PlayerEngine;
class TimeObservers;

/// Hands every call to an engine on another thread as an order. The destructor does not wait for it to end.
class GstQueuePlayer : public QueuePlayer
{
public:
    explicit GstQueuePlayer(MakeSoundSink makeSoundSink = makeSystemSoundSink);
    GstQueuePlayer(const GstQueuePlayer&) = delete;
    GstQueuePlayer& operator=(const GstQueuePlayer&) = delete;
    ~GstQueuePlayer() override;

    /// Puts a file on the player, to repeat a range of it from its start. Returns the loop's number.
    std::uint64_t loop(const std::filesystem::path& file, MediaTimeRange range);
    /// Ends that loop when its range was played to the end; nothing if it is not the present one.
    void stopRepeating(std::uint64_t number);

    void play() override;
    void pause() override;
    void seek(MediaTime time, MediaTime toleranceBefore, MediaTime toleranceAfter) override;
    void removeAllItems() override;
    void setMuted(bool muted) override;
    bool isMuted() const override { return m_muted; }
    void setActionAtItemEnd(ActionAtItemEnd action) override;
    TimeObserverToken addPeriodicTimeObserver(MediaTime interval, TimeObserver observer) override;
    void removeTimeObserver(TimeObserverToken token) override;
    void setVideoOutput(std::shared_ptr<VideoOutput> output) override;
    void setVideoSize(int width, int height) override;

private:
    std::uint64_t nextNumber();

    std::shared_ptr<TimeObservers> m_observers;
    std::shared_ptr<PlayerEngine> m_engine;
    bool m_muted = false;
    std::uint64_t m_number = 0;
};

} // namespace stackreel
