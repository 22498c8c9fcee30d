#pragma once

#include "player/GStreamerPlayer.h"
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

/// Captures what a player sends to its sound sinks. The sound has to be that of `soundRamp`, or a similar
/// ramp. Any thread; must outlive the sinks.
class CapturedSound
{
public:
    /// Consecutive samples without a gap.
    struct Stretch {
        double from = 0; ///< seconds in the file, as encoded in the first sample's value
        double to = 0;
        std::chrono::steady_clock::time_point at; ///< when it is due to be played
        std::chrono::steady_clock::time_point end() const;
    };

    GstElementPtr makeSink();
    /// The number of sinks made so far.
    int sinks() const { return m_sinks; }
    /// The number of sinks that still exist. Without one, nothing is captured.
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

/// A player whose frames and sound are captured.
class SoundPlaying : public testing::Test
{
protected:
    SoundPlaying();

    void loop(const std::filesystem::path& file, double start, double end);
    bool receivesSound(std::size_t stretches) const;
    bool isSilenced() const;
    /// Expects sound that starts and ends with the range, has no gap inside a run, and wraps this many times.
    void expectRuns(double start, double end, int wraps) const;
    /// Expects the sound in sync with the frames, for most of them.
    void expectInSync() const;
    /// For each frame shown with sound, how far the sound is ahead of it, in seconds.
    std::vector<double> distances() const;

    std::shared_ptr<CapturedSound> sound = std::make_shared<CapturedSound>();
    std::shared_ptr<PreviewPlayer> player =
        std::make_shared<GStreamerPlayer>([captured = sound] { return captured->makeSink(); });
    std::shared_ptr<CollectingOutput> output = std::make_shared<CollectingOutput>();
};

} // namespace stackreel
