#pragma once

#include "platform/gstreamer/GstPlayback.h"
#include "platform/playback/PlayerLooper.h"
#include "platform/playback/QueuePlayer.h"
#include "tests/player/CollectingOutput.h"

#include <gst/app/gstappsink.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <memory>
#include <mutex>
#include <vector>

namespace stackreel
{

/// Notes what comes to a player's sound sinks, instead of making it heard. The sound is that of `soundRamp`,
/// or made like it. Any thread; outlives the sinks.
class CapturedSound
{
public:
    /// A stretch of samples without a gap.
    struct Stretch {
        double from = 0; ///< seconds in the file, as its first sample says
        double to = 0;
        std::chrono::steady_clock::time_point at; ///< when it is to be heard
        std::chrono::steady_clock::time_point end() const;
    };

    GstElementPtr makeSink();
    /// How many were made so far.
    int sinks() const { return m_sinks; }
    /// How many of them are still there; nothing comes without one.
    int openSinks() const { return m_openSinks; }
    std::vector<Stretch> stretches() const;
    void forget();

private:
    static GstFlowReturn onSample(GstAppSink* sink, gpointer self);
    static void onSinkGone(gpointer self, GObject* sink);

    mutable std::mutex m_mutex;
    std::vector<Stretch> m_stretches;
    std::atomic<int> m_sinks = 0;
    std::atomic<int> m_openSinks = 0;
};

/// A player whose pictures and sound are noted.
class SoundPlaying : public testing::Test
{
protected:
    SoundPlaying();

    void loop(const std::filesystem::path& file, double start, double end);
    bool hears(std::size_t stretches) const;
    bool isSilenced() const;
    /// Whether the sound is cut at the range's ends, without a gap in each run, and wraps so many times.
    void expectRuns(double start, double end, int wraps) const;
    /// That what is heard goes with the picture on screen, most of the time.
    void expectInStep() const;
    /// How far the sound that is to be heard as a frame is shown lies from it, in seconds, for each such
    /// frame.
    std::vector<double> distances() const;

    std::shared_ptr<CapturedSound> sound = std::make_shared<CapturedSound>();
    GstPlayback playback{[captured = sound] { return captured->makeSink(); }};
    std::shared_ptr<QueuePlayer> player = playback.makePlayer();
    std::shared_ptr<CollectingOutput> output = std::make_shared<CollectingOutput>();
    std::unique_ptr<PlayerLooper> looper;
};

} // namespace stackreel
