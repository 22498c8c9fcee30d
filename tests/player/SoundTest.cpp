#include "tests/player/MarkedClip.h"
#include "tests/player/Repetition.h"
#include "tests/player/SoundPlaying.h"
#include "tests/support/Awaited.h"

#include <mutex>
#include <stdexcept>

namespace stackreel
{

namespace
{

const MarkedClip silent{.name = "gop30.mp4", .frames = 300, .keyInterval = 30};

class SoundTest : public SoundPlaying
{
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

TEST_F(SoundTest, IsSkippedWhenTheDeviceFails)
{
    std::mutex mutex;
    GstElementPtr sink; // created on the sound's thread
    player = std::make_shared<GStreamerPlayer>([&] {
        GstElementPtr made = makeElement("fakesink");
        const std::lock_guard guard(mutex);
        sink.reset(GST_ELEMENT(gst_object_ref(made.get())));
        return made;
    });
    player->setVideoOutput(output);
    loop(soundRamp.file(), 0, 0.5);
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
