#include "tests/player/MarkedClip.h"
#include "tests/player/Repetition.h"
#include "tests/player/SoundPlaying.h"
#include "tests/support/Awaited.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <stdexcept>

namespace stackreel
{

namespace
{

using namespace std::chrono_literals;

const MarkedClip silent{.name = "gop30.mp4", .frames = 300, .keyInterval = 30};

class SoundTest : public SoundPlaying
{
};

/// A sink that can fail. Any thread.
class FailingDevice
{
public:
    GstElementPtr watch(GstElementPtr sink)
    {
        const std::lock_guard lock(m_mutex);
        m_sink.reset(GST_ELEMENT(gst_object_ref(sink.get())));
        return sink;
    }
    bool isOpen()
    {
        const std::lock_guard lock(m_mutex);
        return m_sink != nullptr;
    }
    /// The sink that was made last fails.
    void fail()
    {
        const std::lock_guard lock(m_mutex);
        GST_ELEMENT_ERROR(m_sink.get(), RESOURCE, WRITE, ("The device is gone"), (nullptr));
        m_sink.reset();
    }

private:
    std::mutex m_mutex;
    GstElementPtr m_sink;
};

} // namespace

TEST_F(SoundTest, StaysInSyncOverManyWraps)
{
    loop(soundRamp.file(), 1, 1.5);
    player->play();
    ASSERT_TRUE(output->waitForCount(80));
    player->pause();
    EXPECT_GT(sound->stretches().size(), 20U);
    EXPECT_GT(distances().size(), 40U);
    expectRuns(1, 1.5, 3);
    expectInSync();
}

TEST_F(SoundTest, StopsWhenMutedAndReturnsWhenUnmuted)
{
    loop(soundRamp.file(), 0, 4);
    player->play();
    ASSERT_TRUE(receivesSound(3));
    player->setMuted(true);
    ASSERT_TRUE(isSilenced());
    sound->forget();
    ASSERT_TRUE(output->waitForCount(output->shown().size() + 6)) << "the video continues";
    EXPECT_TRUE(sound->stretches().empty());
    player->setMuted(false);
    EXPECT_TRUE(receivesSound(3));
    EXPECT_EQ(sound->sinks(), 2);
    player->pause();
    EXPECT_TRUE(isSilenced());
}

TEST_F(SoundTest, ReturnsInSyncAfterAWrapWhileMuted)
{
    loop(soundRamp.file(), 1, 1.5);
    player->play();
    ASSERT_TRUE(receivesSound(3));
    player->setMuted(true);
    ASSERT_TRUE(isSilenced());
    output->forget();
    ASSERT_TRUE(output->waitForCount(20)) << "over a wrap";
    output->forget();
    sound->forget();
    player->setMuted(false);
    ASSERT_TRUE(receivesSound(40));
    player->pause();
    expectRuns(1, 1.5, 1);
    expectInSync();
}

TEST_F(SoundTest, FollowsASeek)
{
    loop(soundRamp.file(), 0, 4);
    player->play();
    ASSERT_TRUE(receivesSound(3));
    player->seek(MediaTime::fromSeconds(3.2));
    ASSERT_TRUE(eventually([&] { return sound->stretches().back().from > 3; }));
    for (const auto& stretch : sound->stretches())
        EXPECT_TRUE(stretch.to < 2.5 || stretch.from > 3.19) << stretch.from;
}

TEST_F(SoundTest, OpensNoDeviceWhileMuted)
{
    player->setMuted(true);
    loop(soundRamp.file(), 0, 0.5);
    player->play();
    ASSERT_TRUE(output->waitForCount(20));
    EXPECT_EQ(sound->sinks(), 0);
}

TEST_F(SoundTest, OpensNoDeviceForAClipWithoutSound)
{
    loop(silent.file(), 0, 0.5);
    player->play();
    ASSERT_TRUE(output->waitForCount(40));
    EXPECT_TRUE(repeats(output->numbers(), 0, 14));
    EXPECT_EQ(sound->sinks(), 0) << "no device is opened";
}

TEST_F(SoundTest, IsSkippedWhenNoDeviceCanBeOpened)
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
        player = std::make_shared<GStreamerPlayer>(makeSink);
        player->setVideoOutput(output);
        output->forget();
        loop(soundRamp.file(), 0, 0.5);
        player->play();
        ASSERT_TRUE(output->waitForCount(40));
        EXPECT_TRUE(repeats(output->numbers(), 0, 14));
    }
}

TEST_F(SoundTest, ReturnsInSyncWhenTheDeviceFailsAndComesBack)
{
    const auto device = std::make_shared<FailingDevice>();
    player = std::make_shared<GStreamerPlayer>(
        [captured = sound, device] { return device->watch(captured->makeSink()); },
        PlayerDelays{.soundRetry = 50ms});
    player->setVideoOutput(output);
    loop(soundRamp.file(), 0, 4);
    player->play();
    ASSERT_TRUE(receivesSound(3));
    device->fail();
    ASSERT_TRUE(eventually([this] { return sound->sinks() == 2; }));
    sound->forget();
    output->forget();
    ASSERT_TRUE(receivesSound(20));
    player->pause();
    expectInSync();
}

TEST_F(SoundTest, KeepsTheDeviceOverAPauseAndAnotherRange)
{
    player = std::make_shared<GStreamerPlayer>([captured = sound] { return captured->makeSink(); },
                                               PlayerDelays{.idle = std::chrono::hours(1)});
    player->setVideoOutput(output);
    loop(soundRamp.file(), 0, 4);
    player->play();
    ASSERT_TRUE(receivesSound(3));
    player->pause();
    EXPECT_FALSE(eventually([this] { return sound->openSinks() == 0; }, 300ms));
    sound->forget();
    player->play();
    EXPECT_TRUE(receivesSound(3));
    loop(soundRamp.file(), 2, 3);
    ASSERT_TRUE(eventually([this] {
        const auto stretches = sound->stretches();
        return !stretches.empty() && stretches.back().from >= 2;
    }));
    EXPECT_EQ(sound->sinks(), 1);
    loop(silent.file(), 0, 1);
    EXPECT_TRUE(isSilenced()) << "a clip without sound needs no device";
}

TEST_F(SoundTest, IsSkippedWhenTheDeviceFails)
{
    const auto device = std::make_shared<FailingDevice>();
    player = std::make_shared<GStreamerPlayer>([device] { return device->watch(makeElement("fakesink")); });
    player->setVideoOutput(output);
    loop(soundRamp.file(), 0, 0.5);
    player->play();
    ASSERT_TRUE(output->waitForCount(10));
    ASSERT_TRUE(eventually([&] { return device->isOpen(); }));
    device->fail();
    output->forget();
    ASSERT_TRUE(output->waitForCount(40));
    EXPECT_TRUE(repeats(output->numbers(), 0, 14));
}

} // namespace stackreel
