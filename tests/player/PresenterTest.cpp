#include "player/playout/Presenter.h"

#include "player/base/WakeUp.h"
#include "tests/player/CollectingOutput.h"
#include "tests/support/Awaited.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace stackreel
{

namespace
{

/// A frame that shows a number in stripes, as `MarkedClip` does.
PlanarFramePtr pictureOf(int number)
{
    auto frame = std::make_shared<PlanarFrame>();
    gst_video_info_set_format(&frame->info, GST_VIDEO_FORMAT_I420, 32, 2);
    frame->buffer.reset(gst_buffer_new_allocate(nullptr, frame->info.size, nullptr));
    GstVideoFrame mapped;
    gst_video_frame_map(&mapped, &frame->info, frame->buffer.get(), GST_MAP_WRITE);
    for (guint plane = 0; plane < 3; ++plane) {
        auto* row = static_cast<std::uint8_t*>(GST_VIDEO_FRAME_PLANE_DATA(&mapped, plane));
        const int stride = GST_VIDEO_FRAME_PLANE_STRIDE(&mapped, plane);
        for (int x = 0; x < GST_VIDEO_FRAME_COMP_HEIGHT(&mapped, plane) * stride; ++x)
            row[x] = plane ? 128 : (number >> (x % stride / 2) & 1) ? 235 : 16;
    }
    gst_video_frame_unmap(&mapped);
    frame->time = number * millisecond;
    frame->duration = millisecond;
    return frame;
}

QueuedFrame due(int number, Nanoseconds time)
{
    return {pictureOf(number), time, time, 0, false};
}

class PresenterTest : public testing::Test
{
protected:
    PresenterTest()
    {
        ensureGStreamer();
        presenter.setOutput(output);
    }
    ~PresenterTest() override { observers->close(); }

    std::shared_ptr<TimeObservers> observers = std::make_shared<TimeObservers>();
    std::shared_ptr<CollectingOutput> output = std::make_shared<CollectingOutput>();
    WakeUp wakeUp;
    Presenter presenter{observers, [this] { wakeUp.notify(); }};
};

} // namespace

TEST_F(PresenterTest, ShowsAJumpAtOnceAndNothingElseWhilePaused)
{
    presenter.jump(due(7, second), 1);
    presenter.push(due(8, second + millisecond));
    EXPECT_TRUE(output->waitForNumber(7));
    presenter.jump(due(9, 0), 2);
    EXPECT_TRUE(output->waitForNumber(9));
    EXPECT_EQ(output->numbers(), (std::vector{7, 9}));
    EXPECT_EQ(presenter.position(), 0);
}

TEST_F(PresenterTest, ShowsNoFrameBeforeItIsDue)
{
    presenter.jump(due(0, 0), 1);
    for (int i = 1; i < 20; ++i)
        presenter.push(due(i, i * 5 * millisecond));
    const auto before = std::chrono::steady_clock::now();
    presenter.setRunning(true);
    ASSERT_TRUE(output->waitForNumber(19));
    const auto shown = output->shown();
    ASSERT_EQ(shown.size(), 20U);
    for (int i = 1; i < 20; ++i) {
        EXPECT_EQ(shown[static_cast<std::size_t>(i)].number, i);
        EXPECT_GE(shown[static_cast<std::size_t>(i)].at - before, std::chrono::milliseconds(5 * i));
    }
}

TEST_F(PresenterTest, ShowsFramesThatArriveLate)
{
    presenter.jump(due(0, 0), 1);
    presenter.setRunning(true);
    ASSERT_TRUE(output->waitForNumber(0));
    for (int i = 1; i < 10; ++i) {
        presenter.push(due(i, i)); // due `i` nanoseconds after the start, so always late
        ASSERT_TRUE(output->waitForNumber(i));
    }
    EXPECT_EQ(output->numbers(), (std::vector{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST_F(PresenterTest, GivesANewOutputTheCurrentPictureAndClearsTheOldOne)
{
    presenter.jump(due(3, 0), 1);
    ASSERT_TRUE(output->waitForNumber(3));
    auto other = std::make_shared<CollectingOutput>();
    presenter.setOutput(other);
    EXPECT_EQ(output->current(), -1);
    EXPECT_TRUE(other->waitForNumber(3));
    output->forget();
    presenter.setOutput(nullptr);
    presenter.jump(due(4, 0), 2);
    presenter.setOutput(other);
    EXPECT_TRUE(other->waitForNumber(4));
    EXPECT_TRUE(output->numbers().empty());
}

TEST_F(PresenterTest, ClearsTheOutput)
{
    presenter.jump(due(3, 0), 1);
    ASSERT_TRUE(output->waitForNumber(3));
    presenter.clear(2);
    EXPECT_TRUE(output->waitForNumber(-1));
    auto other = std::make_shared<CollectingOutput>();
    presenter.setOutput(other);
    presenter.jump(due(5, 0), 3);
    EXPECT_TRUE(other->waitForNumber(5));
    EXPECT_EQ(other->numbers().front(), 5);
}

TEST_F(PresenterTest, LimitsItsQueueByBytesAndByNumber)
{
    EXPECT_TRUE(presenter.hasRoom(false));
    presenter.jump(due(0, 0), 1);
    for (int i = 0; i < 12; ++i) {
        EXPECT_TRUE(presenter.hasRoom(true));
        presenter.push(due(i, second));
    }
    EXPECT_FALSE(presenter.hasRoom(true));
    for (int i = 0; i < 78; ++i) {
        EXPECT_TRUE(presenter.hasRoom(false));
        presenter.push(due(i, second));
    }
    EXPECT_FALSE(presenter.hasRoom(false));
    presenter.hold();
    EXPECT_TRUE(presenter.hasRoom(false));
}

TEST_F(PresenterTest, ReportsTheTimeOnlyWhileRunningAndAfterJumps)
{
    std::vector<double> times;
    observers->add(MediaTime::fromUnits(6), [&times](MediaTime time) { times.push_back(time.seconds()); });
    observers->expectJump(1);
    presenter.jump(due(0, second), 1);
    ASSERT_TRUE(eventually([&times] { return times.size() == 1; }));
    EXPECT_EQ(times[0], 1);
    presenter.push(due(1, 5 * second));
    presenter.setRunning(true);
    ASSERT_TRUE(eventually([&times] { return times.size() >= 5; }));
    EXPECT_TRUE(std::is_sorted(times.begin(), times.end()));
    EXPECT_LT(times.back(), 5);
    presenter.setRunning(false);
}

TEST_F(PresenterTest, ReportsNoTimeFromBeforeAnExpectedJump)
{
    std::vector<double> times;
    observers->add(MediaTime::fromUnits(6), [&times](MediaTime time) { times.push_back(time.seconds()); });
    presenter.jump(due(0, second), 1);
    ASSERT_TRUE(output->waitForNumber(0));
    observers->expectJump(2);
    presenter.jump(due(1, 3 * second), 2);
    ASSERT_TRUE(eventually([&times] { return !times.empty(); }));
    EXPECT_EQ(times, std::vector{3.0});
}

TEST_F(PresenterTest, ReportsNothingToARemovedObserver)
{
    int removedCalls = 0;
    int keptCalls = 0;
    TimeObservers::Token own = 0;
    own = observers->add(MediaTime::fromUnits(6), [&](MediaTime) {
        ++removedCalls;
        observers->remove(own);
    });
    const auto early = observers->add(MediaTime::fromUnits(6), [&](MediaTime) { removedCalls += 100; });
    observers->add(MediaTime::fromUnits(6), [&](MediaTime) { ++keptCalls; });
    observers->remove(early);
    observers->remove(early);
    observers->remove(0);
    observers->expectJump(1);
    presenter.jump(due(0, 0), 1);
    presenter.push(due(1, 5 * second));
    presenter.setRunning(true);
    ASSERT_TRUE(eventually([&keptCalls] { return keptCalls >= 3; }));
    EXPECT_EQ(removedCalls, 1);
}

} // namespace stackreel
