#pragma once

#include "player/PreviewPlayer.h"
#include "player/base/VideoOutput.h"
#include "tests/support/fakes/Journal.h"

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace stackreel
{

/// A player that writes each call to the journal ("player 1: seek to 150/600"). `tick` reports a time.
class FakePreviewPlayer : public PreviewPlayer
{
public:
    /// A file that is open, and its range.
    struct Opened {
        std::filesystem::path file;
        MediaTimeRange range;
    };

    FakePreviewPlayer(std::shared_ptr<Journal> journal, int number);

    const std::string& name() const { return m_name; } ///< "player 1"
    /// Whether the last call of `play` or `pause` was `play`.
    bool isPlaying() const { return m_playing; }
    bool isMuted() const { return m_muted; }
    /// What was opened last; none after `close`.
    const std::optional<Opened>& opened() const { return m_opened; }
    bool isObserved() const { return !m_observers.empty(); }
    /// Calls all registered time observers.
    void tick(MediaTime time) const;
    /// The video output that was set last, or null.
    const std::shared_ptr<VideoOutput>& videoOutput() const { return m_output; }

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
    void note(const std::string& what) const;

    std::shared_ptr<Journal> m_journal;
    std::string m_name;
    bool m_muted = false;
    bool m_playing = false;
    std::optional<Opened> m_opened;
    std::map<TimeObserverToken, TimeObserver> m_observers;
    TimeObserverToken m_lastToken = 0;
    std::shared_ptr<VideoOutput> m_output;
};

} // namespace stackreel
