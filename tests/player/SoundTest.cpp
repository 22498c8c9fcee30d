#include "platform/gstreamer/GstPlayback.h"
#include "platform/gstreamer/Handover.h"
#include "platform/playback/PlayerItem.h"
#include "platform/playback/PlayerLooper.h"
#include "platform/playback/QueuePlayer.h"
#include "tests/player/CollectingOutput.h"
#include "tests/player/MarkedClip.h"
#include "tests/player/Repetition.h"
#include "tests/support/Awaited.h"

#include <gst/app/gstappsink.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>
#include <mutex>
#include <vector>

namespace stackreel
{

namespace
{

/// Its sound tells where it is: a sample's value is its time, 16 seconds being the loudest there is.
const MarkedClip ramp{.name = "ramp.mov",
                      .frames = 120,
                      .keyInterval = 250,
                      .sound = true,
                      .tone = "aevalsrc='t/16|t/16':s=48000",
                      .output = "-c:a pcm_s16le"};
const MarkedClip silent{.name = "gop30.mp4", .frames = 300, .keyInterval = 30};

/// Notes what comes to a sound sink, instead of making it heard.
class CapturedSound
{
public:
    /// A stretch of samples without a gap.
    struct Stretch {
        double from = 0; ///< seconds in the file, as its first sample says
        double to = 0;
        std::chrono::steady_clock::time_point at; ///< when it is to be heard
        std::chrono::steady_clock::time_point end() const
        {
            return at + std::chrono::nanoseconds(std::llround((to - from) * 1e9));
        }
    };

    GstElementPtr makeSink()
    {
        ++m_sinks;
        GstElementPtr sink = makeElement("appsink");
        g_object_set(sink.get(), "sync", FALSE, nullptr);
        GstAppSinkCallbacks callbacks = {};
        callbacks.new_sample = onSample;
        gst_app_sink_set_callbacks(GST_APP_SINK(sink.get()), &callbacks, this, nullptr);
        return sink;
    }
    int sinks() const { return m_sinks; }
    std::vector<Stretch> stretches() const
    {
        const std::lock_guard lock(m_mutex);
        return m_stretches;
    }
    void forget()
    {
        const std::lock_guard lock(m_mutex);
        m_stretches.clear();
    }

private:
    static GstFlowReturn onSample(GstAppSink* sink, gpointer self)
    {
        const Handover handover;
        const GstSamplePtr sample(gst_app_sink_pull_sample(sink));
        GstBuffer* buffer = gst_sample_get_buffer(sample.get());
        GstMapInfo map;
        gst_buffer_map(buffer, &map, GST_MAP_READ);
        std::int16_t first = 0;
        std::memcpy(&first, map.data, sizeof first);
        const double length = static_cast<double>(map.size) / 4 / 48000;
        gst_buffer_unmap(buffer, &map);
        auto* that = static_cast<CapturedSound*>(self);
        const std::lock_guard lock(that->m_mutex);
        const double from = first * 16 / 32768.0;
        that->m_stretches.push_back(
            {from, from + length,
             std::chrono::steady_clock::time_point(std::chrono::nanoseconds(GST_BUFFER_PTS(buffer)))});
        return GST_FLOW_OK;
    }

    mutable std::mutex m_mutex;
    std::vector<Stretch> m_stretches;
    std::atomic<int> m_sinks = 0;
};

double milliseconds(std::chrono::steady_clock::duration duration)
{
    return std::chrono::duration<double, std::milli>(duration).count();
}

class SoundTest : public testing::Test
{
protected:
    SoundTest()
    {
        player->setActionAtItemEnd(QueuePlayer::ActionAtItemEnd::none);
        player->setVideoOutput(output);
    }

    void loop(const std::filesystem::path& file, double start, double end)
    {
        looper = playback.makeLooper(player, PlayerItem{file},
                                     {MediaTime::fromSeconds(start), MediaTime::fromSeconds(end - start)});
    }
    bool hears(std::size_t stretches)
    {
        return eventually([&] { return sound->stretches().size() >= stretches; });
    }
    /// How far the sound that is to be heard as a frame is shown lies from it, in seconds, for each such
    /// frame.
    std::vector<double> distances() const
    {
        std::vector<double> found;
        const auto stretches = sound->stretches();
        for (const auto& shown : output->shown())
            for (const auto& stretch : stretches)
                if (stretch.at <= shown.at && shown.at < stretch.end())
                    found.push_back(stretch.from + milliseconds(shown.at - stretch.at) / 1000 -
                                    shown.seconds);
        return found;
    }

    std::shared_ptr<CapturedSound> sound = std::make_shared<CapturedSound>();
    GstPlayback playback{[captured = sound] { return captured->makeSink(); }};
    std::shared_ptr<QueuePlayer> player = playback.makePlayer();
    std::shared_ptr<CollectingOutput> output = std::make_shared<CollectingOutput>();
    std::unique_ptr<PlayerLooper> looper;
};

} // namespace

TEST_F(SoundTest, goesWithThePicturesOverManyWraps)
{
    loop(ramp.file(), 1, 1.5);
    player->play();
    ASSERT_TRUE(output->waitForCount(80));
    player->pause();
    const auto stretches = sound->stretches();
    ASSERT_GT(stretches.size(), 20U);
    int wraps = 0;
    for (std::size_t i = 1; i < stretches.size(); ++i) {
        const auto& before = stretches[i - 1];
        EXPECT_GE(stretches[i].from, 0.999);
        EXPECT_LE(stretches[i].to, 1.501);
        if (stretches[i].from > before.from) {
            EXPECT_NEAR(stretches[i].from, before.to, 0.001) << i;
        } else {
            ++wraps;
            EXPECT_NEAR(before.to, 1.5, 0.001) << "cut at the range's end";
            EXPECT_NEAR(stretches[i].from, 1, 0.001) << "and begun at its start";
        }
    }
    EXPECT_GE(wraps, 3);
    std::vector<double> off = distances();
    ASSERT_GT(off.size(), 40U);
    // The clock waits for frames that come late, and on a busy machine a frame may be shown late; most are
    // not.
    std::sort(off.begin(), off.end(), [](double a, double b) { return std::abs(a) < std::abs(b); });
    EXPECT_LT(std::abs(off[off.size() / 2]), 0.04);
}

TEST_F(SoundTest, fallsSilentWhenMutedAndComesBack)
{
    loop(ramp.file(), 0, 4);
    player->play();
    ASSERT_TRUE(hears(3));
    player->setMuted(true);
    ASSERT_TRUE(eventually([&] {
        sound->forget();
        const std::size_t frames = output->shown().size();
        return output->waitForCount(frames + 6) && sound->stretches().empty();
    }));
    player->setMuted(false);
    EXPECT_TRUE(hears(3));
    EXPECT_EQ(sound->sinks(), 2);
    player->pause();
    ASSERT_TRUE(eventually([&] {
        const std::size_t count = sound->stretches().size();
        eventually([] { return false; }, std::chrono::milliseconds(100));
        return sound->stretches().size() == count;
    }));
}

TEST_F(SoundTest, followsASeek)
{
    loop(ramp.file(), 0, 4);
    player->play();
    ASSERT_TRUE(hears(3));
    player->seek(MediaTime::fromSeconds(3.2), {}, {});
    ASSERT_TRUE(eventually([&] { return sound->stretches().back().from > 3; }));
    for (const auto& stretch : sound->stretches())
        EXPECT_TRUE(stretch.to < 2.5 || stretch.from > 3.19) << stretch.from;
}

TEST_F(SoundTest, opensNoDeviceWhileMuted)
{
    player->setMuted(true);
    loop(ramp.file(), 0, 0.5);
    player->play();
    ASSERT_TRUE(output->waitForCount(20));
    EXPECT_EQ(sound->sinks(), 0);
}

TEST_F(SoundTest, isNotThereInAClipWithout)
{
    loop(silent.file(), 0, 0.5);
    player->play();
    ASSERT_TRUE(output->waitForCount(40));
    EXPECT_TRUE(repeats(output->numbers(), 0, 14));
    EXPECT_TRUE(sound->stretches().empty());
}

TEST_F(SoundTest, isDoneWithoutWhenNoDeviceCanBeOpened)
{
    const MakeSoundSink broken[] = {
        [] {
            GstElementPtr sink = makeElement("fakesink");
            gst_util_set_object_arg(G_OBJECT(sink.get()), "state-error", "null-to-ready");
            return sink;
        },
        []() -> GstElementPtr { throw std::runtime_error("no such element"); },
    };
    for (const MakeSoundSink& makeSink : broken) {
        GstPlayback other(makeSink);
        player = other.makePlayer();
        player->setVideoOutput(output);
        output->forget();
        looper =
            other.makeLooper(player, PlayerItem{ramp.file()}, {MediaTime(), MediaTime::fromSeconds(0.5)});
        player->play();
        ASSERT_TRUE(output->waitForCount(40));
        EXPECT_TRUE(repeats(output->numbers(), 0, 14));
    }
}

TEST_F(SoundTest, isDoneWithoutWhenTheDeviceGoes)
{
    std::mutex mutex;
    GstElementPtr sink; // made on the thread of the sound
    GstPlayback other([&] {
        GstElementPtr made = makeElement("fakesink");
        const std::lock_guard guard(mutex);
        sink.reset(GST_ELEMENT(gst_object_ref(made.get())));
        return made;
    });
    player = other.makePlayer();
    player->setVideoOutput(output);
    looper = other.makeLooper(player, PlayerItem{ramp.file()}, {MediaTime(), MediaTime::fromSeconds(0.5)});
    player->play();
    ASSERT_TRUE(output->waitForCount(10));
    ASSERT_TRUE(eventually([&] {
        const std::lock_guard guard(mutex);
        return sink != nullptr;
    }));
    GST_ELEMENT_ERROR(sink.get(), RESOURCE, WRITE, ("The device is gone"), (nullptr));
    output->forget();
    ASSERT_TRUE(output->waitForCount(40));
    EXPECT_TRUE(repeats(output->numbers(), 0, 14));
}

} // namespace stackreel
