#pragma once

#include "player/base/ForegroundWork.h"
#include "player/base/WakeUp.h"
#include "player/engine/PlayerOrders.h"
#include "player/engine/SeekRequests.h"
#include "player/loop/HeadFiller.h"
#include "player/loop/LoopFeeder.h"
#include "player/pictures/FrameReader.h"
#include "player/playout/Presenter.h"
#include "player/playout/TimeObservers.h"
#include "player/sound/Sound.h"

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace stackreel
{

/// Brings a player in line with its orders, on a thread of its own: everything of GStreamer's that may take
/// time happens there.
class PlayerEngine
{
public:
    PlayerEngine(std::shared_ptr<TimeObservers> observers, MakeSoundSink makeSoundSink);

    /// Begins the work, on a thread that keeps `engine` alive until it is ordered to quit.
    static void start(const std::shared_ptr<PlayerEngine>& engine);

    /// Changes the orders; any thread, returns at once.
    void order(const std::function<void(PlayerOrders&)>& change);
    Presenter& presenter() { return m_presenter; }

private:
    static constexpr std::size_t keptBytes = 64U << 20; ///< of a range's frames, see `KeptFrames`

    void run();
    PlayerOrders takeOrders();
    void obey(const PlayerOrders& orders);
    void obeyLoop(const PlayerOrders& orders);
    void openLoop(const PlayerOrders::Loop& loop);
    void closeLoop();
    void obeyBox(PictureSize box);
    void obeySeek(const PlayerOrders& orders);
    bool feed();
    LoopFeeder::Step takeStep(QueuedFrame& frame);
    void deliver(QueuedFrame frame);
    void giveUp();
    void tendSeek();
    void tendHead();
    void startFiller();
    bool wantsHead() const;
    void tendRunning();
    void tendEnd();
    bool isFrameAwaited() const;
    void tendForeground();
    void tendDecoder();
    void tendSound();
    std::optional<Clock::Instant> nextDeadline() const;
    bool mustWaitForHead() const;

    WakeUp m_wakeUp;
    std::mutex m_mutex;
    // Guarded by the mutex.
    PlayerOrders m_ordered;
    std::uint64_t m_obeyed = 0;                 ///< the seek that the engine's thread knows of
    std::optional<ForegroundWork> m_foreground; ///< from when a frame is asked for until it is shown

    // The engine's thread only.
    PlayerOrders m_orders; ///< those obeyed so far
    std::unique_ptr<FrameReader> m_reader;
    SourceFile m_file; ///< the reader's
    std::unique_ptr<LoopFeeder> m_feeder;
    std::unique_ptr<HeadFiller> m_filler;
    bool m_fillerUseless = false;
    bool m_failed = false;
    SeekRequests m_seeks;
    Clock::Instant m_boxSince = {};
    std::optional<Clock::Instant> m_replayingSince; ///< from memory alone
    std::optional<Clock::Instant> m_closing;        ///< when to close what no loop asked for again

    bool m_audible = false;
    bool m_ended = false; ///< the end of playing was dealt with

    Presenter m_presenter; // ends before what its thread wakes
    Sound m_sound;
};

} // namespace stackreel
