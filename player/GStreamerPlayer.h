#pragma once

#include "player/PreviewPlayer.h"
#include "player/base/PlayerDelays.h"
#include "player/sound/SoundOutput.h"

#include <cstdint>
#include <filesystem>
#include <memory>

namespace stackreel
{

class PlayerEngine;
class TimeObservers;

/// The player on GStreamer. Passes every call to an engine on another thread. The destructor does not wait
/// for it to end.
class GStreamerPlayer : public PreviewPlayer
{
public:
    /// The sound ends in what `makeSoundSink` makes, on a thread of the player's. Throws `std::system_error`
    /// when no thread can be started.
    explicit GStreamerPlayer(MakeSoundSink makeSoundSink = makeSystemSoundSink, PlayerDelays delays = {});
    GStreamerPlayer(const GStreamerPlayer&) = delete;
    GStreamerPlayer& operator=(const GStreamerPlayer&) = delete;
    ~GStreamerPlayer() override;

    void open(const std::filesystem::path& file, MediaTimeRange range) override;
    void close() override;
    void play() override;
    void pause() override;
    void seek(MediaTime time) override;
    void setMuted(bool muted) override;
    PlayerState state() const override;
    TimeObserverToken addPeriodicTimeObserver(MediaTime interval, TimeObserver observer) override;
    void removeTimeObserver(TimeObserverToken token) override;
    void setVideoOutput(std::shared_ptr<VideoOutput> output) override;
    void setVideoSize(int width, int height) override;

private:
    std::uint64_t nextNumber();

    std::shared_ptr<TimeObservers> m_observers;
    std::shared_ptr<PlayerEngine> m_engine;
    std::uint64_t m_number = 0;
};

} // namespace stackreel
