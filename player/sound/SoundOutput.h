#pragma once

#include "player/base/Clock.h"
#include "player/base/GStreamer.h"
#include "player/sound/SoundPiece.h"

#include <atomic>
#include <functional>

namespace stackreel
{

/// Makes the sink of a player's sound. Throws `std::runtime_error` when GStreamer lacks the element.
using MakeSoundSink = std::function<GstElementPtr()>;

/// The system's sound device, or nothing where there is none.
GstElementPtr makeSystemSoundSink();

/// Plays pieces of sound when they are due. At most a second of sound waits for the device. One thread.
/// Opening and closing may block as long as the sound device does; playing does not block.
class SoundOutput
{
public:
    /// Opens the device. Throws `std::runtime_error` when GStreamer lacks an element.
    explicit SoundOutput(const MakeSoundSink& makeSink);
    SoundOutput(const SoundOutput&) = delete;
    SoundOutput& operator=(const SoundOutput&) = delete;
    ~SoundOutput();

    /// The device failed.
    bool failed() const { return m_failed; }
    /// Plays a piece, whose first sample is due at `at`.
    void play(const SoundPiece& piece, Clock::Instant at);
    /// Drops what has not been heard yet.
    void silence();

private:
    static GstBusSyncReply onMessage(GstBus* bus, GstMessage* message, gpointer self);

    GstElementPtr m_pipeline;
    GstElement* m_source = nullptr; ///< the pipeline's
    std::atomic<bool> m_failed = false;
    bool m_silent = true;
};

} // namespace stackreel
