#pragma once

#include "player/QueuePlayer.h"
#include "player/base/VideoOutput.h"
#include "tests/support/fakes/Journal.h"

#include <map>
#include <memory>
#include <string>

namespace stackreel
{

/// A player that writes each call to the journal ("player 1: seek to 150/600"). `tick` reports a time.
class FakeQueuePlayer : public QueuePlayer
{
public:
    FakeQueuePlayer(std::shared_ptr<Journal> journal, int number);

    const std::string& name() const { return m_name; } ///< "player 1"
    /// Whether the last call of `play` or `pause` was `play`.
    bool isPlaying() const { return m_playing; }
    bool isObserved() const { return !m_observers.empty(); }
    /// Calls all registered time observers.
    void tick(MediaTime time) const;
    /// The video output that was set last, or null.
    const std::shared_ptr<VideoOutput>& videoOutput() const { return m_output; }

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
    void note(const std::string& what) const;

    std::shared_ptr<Journal> m_journal;
    std::string m_name;
    bool m_muted = false;
    bool m_playing = false;
    std::map<TimeObserverToken, TimeObserver> m_observers;
    TimeObserverToken m_lastToken = 0;
    std::shared_ptr<VideoOutput> m_output;
};

} // namespace stackreel
