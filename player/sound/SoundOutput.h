#pragma once

#include "player/base/Clock.h"
#include "player/base/GStreamer.h"
#include "player/sound/SoundPiece.h"

#include <atomic>
#include <functional>

namespace stackreel
{

/// Makes what a player's sound ends in; throws `std::runtime_error` when that is not to be had.
using MakeSoundSink = std::function<GstElementPtr()>;

/// The system's sound device, or nothing where there is none.
GstElementPtr makeSystemSoundSink();

/// Plays pieces of sound, each at its moment, of which no more than a second waits for the device. One
/// thread; opening and closing may take as long as the sound device does, playing does not.
class SoundOutput
{
public:
    /// Opens the device. Throws `std::runtime_error` when GStreamer lacks an element.
    explicit SoundOutput(const MakeSoundSink& makeSink);
    SoundOutput(const SoundOutput&) = delete;
    SoundOutput& operator=(const SoundOutput&) = delete;
    ~SoundOutput();

    /// The device cannot be used, or not any more.
    bool failed() const { return m_failed; }
    /// Plays a piece as its first sample's moment comes.
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
