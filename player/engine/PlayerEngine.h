#pragma once

#include "player/base/ForegroundWork.h"
#include "player/base/PlayerDelays.h"
#include "player/base/PlayerState.h"
#include "player/base/WakeUp.h"
#include "player/engine/PlayerRequest.h"
#include "player/engine/SeekRequests.h"
#include "player/loop/HeadPrefetch.h"
#include "player/loop/LoopFeeder.h"
#include "player/pictures/FrameReader.h"
#include "player/playout/Presenter.h"
#include "player/playout/TimeObservers.h"
#include "player/sound/Sound.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace stackreel
{

/// Carries out what was requested of a player, on a thread of its own: everything in GStreamer that may block
/// runs there.
class PlayerEngine
{
public:
    PlayerEngine(std::shared_ptr<TimeObservers> observers, MakeSoundSink makeSoundSink, PlayerDelays delays);

    /// Starts the thread, which keeps `engine` alive until it is requested to quit.
    static void start(const std::shared_ptr<PlayerEngine>& engine);

    /// Changes the request. Any thread; returns at once.
    void request(const std::function<void(PlayerRequest&)>& change);
    /// Any thread. A frame that was requested before this call counts as missing at once.
    PlayerState state() const;
    Presenter& presenter() { return m_presenter; }

private:
    static constexpr std::size_t keptBytes = 64U << 20; ///< of a range's frames, see `KeptFrames`

    void run();
    PlayerRequest requested();
    void apply(const PlayerRequest& request);
    void applyLoop(const PlayerRequest& request, bool retries);
    void openLoop(const PlayerRequest::Loop& loop);
    void openFile(const std::filesystem::path& file);
    void closeLoop();
    void applyBox(PictureSize box);
    bool feed();
    LoopFeeder::Step takeStep(QueuedFrame& frame);
    void deliver(QueuedFrame frame);
    void fail(std::string reason);
    void startSeek();
    void updateHead();
    void startPrefetch();
    bool wantsHead() const;
    void updateRunning();
    bool isFrameAwaited() const;
    bool isDecoderIdle() const;
    void releaseIdleDecoder();
    void updateSound();
    void publish();
    PlayerState currentState() const;
    std::optional<Clock::Instant> nextDeadline() const;
    bool waitsForHead() const;

    const PlayerDelays m_delays;
    WakeUp m_wakeUp;
    mutable std::mutex m_mutex;
    // Guarded by the mutex.
    PlayerRequest m_requested;
    std::uint64_t m_appliedSeek = 0;            ///< the number of the last seek that was applied
    std::optional<ForegroundWork> m_foreground; ///< from the request of a frame until it is shown
    PlayerState m_state;                        ///< at the end of the engine's last turn

    // The engine's thread only.
    PlayerRequest m_applied; ///< what the engine has carried out or is carrying out
    std::unique_ptr<FrameReader> m_reader;
    SourceFile m_file; ///< the reader's
    std::unique_ptr<LoopFeeder> m_feeder;
    std::unique_ptr<HeadPrefetch> m_prefetch;
    bool m_prefetchFailed = false;
    std::optional<std::string> m_failure; ///< why the file shows nothing
    SeekRequests m_seeks;
    Clock::Instant m_boxSince = {};
    std::optional<Clock::Instant> m_idleSince; ///< nothing is decoded
    std::optional<Clock::Instant> m_closing;   ///< when to close a file that no loop uses any more
    /// The presenter's frames follow on the last jump without a gap, and are what the reader would deliver.
    bool m_reusesDecoded = false;

    bool m_audible = false;

    Presenter m_presenter; // destroyed before `m_wakeUp`, which its thread notifies
    Sound m_sound;
};

} // namespace stackreel
