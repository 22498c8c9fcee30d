#include "platform/gstreamer/ForegroundWork.h"
#include "platform/gstreamer/GstPlayback.h"
#include "platform/gstreamer/GstQueuePlayer.h"
#include "platform/playback/PlayerItem.h"
#include "platform/playback/PlayerLooper.h"
#include "platform/playback/QueuePlayer.h"
#include "tests/player/CollectingOutput.h"
#include "tests/player/MarkedClip.h"
#include "tests/player/Repetition.h"
#include "tests/support/Awaited.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace stackreel
{

namespace
{

const MarkedClip longInterval{.name = "gop250.mp4", .frames = 300, .keyInterval = 250};
const MarkedClip shortInterval{.name = "gop30.mp4", .frames = 300, .keyInterval = 30};
const MarkedClip fast{.name = "fast.mp4", .frames = 300, .rate = 60, .keyInterval = 250};
const MarkedClip variableRate{.name = "variable.mp4", .frames = 120, .keyInterval = 40, .variable = true};
const MarkedClip sounding{.name = "sounding.mp4", .frames = 120, .keyInterval = 250, .sound = true};

MediaTime at(double seconds)
{
    return MediaTime::fromSeconds(seconds);
}
MediaTimeRange range(double start, double end)
{
    return {at(start), at(end - start)};
}

/// Whether this process has a file open.
bool isOpen(const std::filesystem::path& file)
{
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        if (std::filesystem::read_symlink(entry.path(), gone) == file)
            return true;
    }
    return false;
}

class PlayerTest : public testing::Test
{
protected:
    PlayerTest()
    {
        player->setActionAtItemEnd(QueuePlayer::ActionAtItemEnd::none);
        player->setMuted(true);
        player->setVideoOutput(output);
    }

    void loop(const std::filesystem::path& file, double start, double end)
    {
        looper = playback.makeLooper(player, PlayerItem{file}, range(start, end));
    }
    /// Exactly.
    void seek(double seconds) { player->seek(at(seconds), {}, {}); }
    /// What the model does when a trim handle was let go.
    void rebuild(const std::filesystem::path& file, double start, double end, double position)
    {
        looper->disableLooping();
        looper.reset();
        player->removeAllItems();
        loop(file, start, end);
        seek(position);
        player->play();
    }

    GstPlayback playback;
    std::shared_ptr<QueuePlayer> player = playback.makePlayer();
    std::shared_ptr<CollectingOutput> output = std::make_shared<CollectingOutput>();
    std::unique_ptr<PlayerLooper> looper;
};

} // namespace

TEST_F(PlayerTest, repeatsARangeWithoutLosingOrDoublingAFrame)
{
    const struct {
        const MarkedClip& clip;
        double start, end;
        int first, last;
    } rows[] = {
        {longInterval, 7, 7.1, 210, 212}, {longInterval, 8, 8.25, 240, 247},
        {longInterval, 4, 4.7, 120, 140}, {shortInterval, 2.95, 3.55, 88, 106},
        {fast, 3, 3.5, 180, 209},         {variableRate, 2, 2.5, 60, 74},
        {sounding, 1.5, 2, 45, 59},
    };
    for (const auto& row : rows) {
        output->forget();
        loop(row.clip.file(), row.start, row.end);
        player->play();
        const auto frames = static_cast<std::size_t>(row.last - row.first + 1);
        ASSERT_TRUE(output->waitForCount(std::max(3 * frames, std::size_t{12}))) << row.clip.name;
        player->removeAllItems();
        ASSERT_TRUE(output->waitForNumber(-1));
        std::vector<int> numbers = output->numbers();
        numbers.pop_back();
        EXPECT_EQ(numbers.front(), row.first);
        EXPECT_TRUE(repeats(numbers, row.first, row.last)) << row.clip.name << " from " << row.start;
    }
}

TEST_F(PlayerTest, letsTheFileGoWhileARangeRepeatsFromMemory)
{
    const std::filesystem::path file = longInterval.file();
    loop(file, 4, 4.5);
    player->play();
    ASSERT_TRUE(output->waitForNumber(120));
    EXPECT_TRUE(isOpen(file));
    for (int wraps = 0; wraps < 200 && isOpen(file); ++wraps) {
        ASSERT_TRUE(output->waitForNumber(134));
        ASSERT_TRUE(output->waitForNumber(120));
    }
    EXPECT_FALSE(isOpen(file));
    player->pause();
    seek(7);
    EXPECT_TRUE(output->waitForNumber(210));
    EXPECT_TRUE(isOpen(file));
}

TEST_F(PlayerTest, showsTheFrameOfAnExactSeekWhilePaused)
{
    loop(longInterval.file(), 0, 10);
    for (double time : {0.0, 5.0, 4.99, 9.9, 8.35, 0.016, 10.0}) {
        seek(time);
        EXPECT_TRUE(output->waitForNumber(std::min(299, static_cast<int>(std::floor(time * 30 + 0.02)))))
            << time;
    }
}

TEST_F(PlayerTest, showsFramesOutsideTheRangeAndPlaysFromItsStart)
{
    loop(longInterval.file(), 2, 2.5);
    for (double time : {1.0, 2.5, 7.0}) {
        seek(time);
        ASSERT_TRUE(output->waitForNumber(static_cast<int>(time * 30))) << time;
        player->play();
        ASSERT_TRUE(output->waitForNumber(60)) << time;
        ASSERT_TRUE(output->waitForNumber(74)) << time;
        player->pause();
    }
}

TEST_F(PlayerTest, honoursTheLastOfManySeeks)
{
    loop(longInterval.file(), 0, 10);
    for (int round = 0; round < 5; ++round) {
        for (int number = 0; number < 200; ++number)
            seek((number * 37 % 300) / 30.0);
        const int last = 100 + round * 20;
        seek(last / 30.0);
        ASSERT_TRUE(output->waitForNumber(last)) << last;
    }
    // Far fewer frames were shown than asked for: requests replace each other.
    EXPECT_LT(output->shown().size(), 500U);
}

TEST_F(PlayerTest, replacesTheRangeWithoutLosingThePicture)
{
    loop(longInterval.file(), 7, 7.5);
    player->play();
    ASSERT_TRUE(output->waitForNumber(224));
    rebuild(longInterval.file(), 7.2, 7.5, 7.2);
    ASSERT_TRUE(output->waitForNumber(216));
    ASSERT_TRUE(output->waitForNumber(224));
    rebuild(longInterval.file(), 7.2, 7.4, 7.4 - 1.0 / 30);
    ASSERT_TRUE(output->waitForNumber(221));
    output->forget();
    ASSERT_TRUE(output->waitForCount(30));
    const auto numbers = output->numbers();
    EXPECT_TRUE(repeats(numbers, 216, 221));
    for (int number : numbers)
        EXPECT_GE(number, 0);
}

TEST_F(PlayerTest, clearsThePictureWhenItLosesItsItem)
{
    loop(shortInterval.file(), 0, 1);
    ASSERT_TRUE(output->waitForNumber(0));
    looper.reset();
    player->removeAllItems();
    EXPECT_TRUE(output->waitForNumber(-1));
    loop(shortInterval.file(), 3, 4);
    EXPECT_TRUE(output->waitForNumber(90));
}

TEST_F(PlayerTest, playsToTheEndOnceLoopingIsDisabled)
{
    loop(longInterval.file(), 7, 7.2);
    player->play();
    ASSERT_TRUE(output->waitForCount(20));
    looper->disableLooping();
    double last = 0;
    player->addPeriodicTimeObserver(at(0.05), [&last](MediaTime time) { last = time.seconds(); });
    EXPECT_TRUE(eventually([&last] { return std::abs(last - 7.2) < 0.001; }));
    EXPECT_EQ(output->current(), 215);
    EXPECT_TRUE(repeats(output->numbers(), 210, 215));
}

TEST_F(PlayerTest, doesAtTheEndWhatItWasTold)
{
    using Action = QueuePlayer::ActionAtItemEnd;
    for (Action action : {Action::none, Action::pause, Action::advance}) {
        player->setActionAtItemEnd(action);
        loop(longInterval.file(), 7, 7.2);
        player->play();
        ASSERT_TRUE(output->waitForNumber(213));
        double last = 0;
        const auto token =
            player->addPeriodicTimeObserver(at(0.05), [&last](MediaTime time) { last = time.seconds(); });
        looper->disableLooping();
        if (action == Action::advance) {
            EXPECT_TRUE(output->waitForNumber(-1));
            continue;
        }
        ASSERT_TRUE(eventually([&last] { return std::abs(last - 7.2) < 0.001; }));
        EXPECT_EQ(output->current(), 215);
        output->forget();
        seek(7.1);
        ASSERT_TRUE(output->waitForNumber(213));
        if (action == Action::none) {
            EXPECT_TRUE(output->waitForNumber(215)) << "a seek back plays on";
        }
        player->removeTimeObserver(token);
        if (action == Action::pause) {
            // Long enough for a player that plays to get there.
            EXPECT_FALSE(
                eventually([this] { return output->current() != 213; }, std::chrono::milliseconds(300)));
            player->play();
            EXPECT_TRUE(output->waitForNumber(215));
        }
    }
}

TEST_F(PlayerTest, reportsTheTimeOfJumpsAndNoneWithoutAnItem)
{
    std::vector<MediaTime> times;
    const auto token =
        player->addPeriodicTimeObserver(at(0.05), [&](MediaTime time) { times.push_back(time); });
    loop(longInterval.file(), 2, 3);
    ASSERT_TRUE(eventually([&] { return !times.empty(); }));
    EXPECT_EQ(times.back(), at(2));
    seek(2.51);
    ASSERT_TRUE(eventually([&] { return times.back() == at(2.51); }));
    EXPECT_EQ(times.size(), 2U);
    player->play();
    ASSERT_TRUE(eventually([&] { return times.size() > 30; }));
    for (MediaTime time : times) {
        EXPECT_GE(time.seconds(), 2);
        EXPECT_LE(time.seconds(), 3.001);
    }
    player->removeAllItems();
    ASSERT_TRUE(eventually([&] { return times.back() == MediaTime::indefinite(); }));
    player->removeTimeObserver(token);
}

TEST_F(PlayerTest, scalesToTheSizeItIsShownAtWithoutLosingAFrame)
{
    loop(shortInterval.file(), 0, 0.5);
    player->setVideoSize(160, 160);
    seek(0.4);
    ASSERT_TRUE(output->waitFor([](const auto& shown) {
        return !shown.empty() && shown.back().number == 12 && shown.back().width == 160;
    }));
    EXPECT_EQ(output->shown().back().height, 90);
    player->setVideoSize(64, 64);
    ASSERT_TRUE(output->waitFor([](const auto& shown) { return shown.back().width == 64; }));
    EXPECT_EQ(output->current(), 12);
    output->forget();
    player->play();
    ASSERT_TRUE(output->waitForCount(20));
    player->setVideoSize(320, 180);
    ASSERT_TRUE(output->waitFor([](const auto& shown) { return shown.back().width == 320; }));
    EXPECT_TRUE(repeats(output->numbers(), 0, 14));
}

TEST_F(PlayerTest, showsNothingForWhatCannotBePlayedAndGoesOnWithTheNext)
{
    int reports = 0;
    player->addPeriodicTimeObserver(at(0.05),
                                    [&](MediaTime time) { reports += time == MediaTime::indefinite(); });
    loop(plainFile("text.mp4", "no film at all, only words and words and words"), 0, 1);
    player->play();
    EXPECT_TRUE(eventually([&] { return reports > 0; }));
    loop(shortInterval.file(), 1, 2);
    EXPECT_TRUE(output->waitForNumber(40));
}

TEST_F(PlayerTest, keepsTheMainThreadFreeWhateverItIsToldToDo)
{
    using Milliseconds = std::chrono::duration<double, std::milli>;
    std::map<std::string, std::vector<double>> times;
    const auto timed = [&times](const char* kind, auto&& call) {
        const auto start = std::chrono::steady_clock::now();
        call();
        times[kind].push_back(Milliseconds(std::chrono::steady_clock::now() - start).count());
    };
    const auto file = longInterval.file();
    for (int round = 0; round < 10; ++round) {
        timed("loop", [&] { loop(file, 5, 9); });
        timed("play", [&] { player->play(); });
        for (int i = 0; i < 20; ++i)
            timed("seek", [&] { seek(5 + i * 0.1); });
        timed("size", [&] { player->setVideoSize(300 - round, 180); });
        timed("mute", [&] { player->setMuted(round % 2 == 0); });
        timed("pause", [&] { player->pause(); });
        timed("disable", [&] { looper->disableLooping(); });
        timed("drop the looper", [&] { looper.reset(); });
        timed("remove", [&] { player->removeAllItems(); });
        timed("drop the player", [&] { player.reset(); });
        timed("make a player", [&] { player = playback.makePlayer(); });
        player->setMuted(true);
    }
    // A busy machine takes the processor away now and then; calls that wait for the decoder are slow every
    // time.
    for (auto& [kind, taken] : times) {
        std::nth_element(taken.begin(), taken.begin() + 2, taken.end());
        EXPECT_LT(taken[2], 8) << "milliseconds to " << kind;
    }
}

TEST_F(PlayerTest, leavesItsEndToAnotherThread)
{
    /// Goes with the last of the player.
    struct Witness {
        std::atomic<bool>& gone;
        std::atomic<bool>& onMainThread;
        std::thread::id mainThread = std::this_thread::get_id();
        ~Witness()
        {
            onMainThread = onMainThread || std::this_thread::get_id() == mainThread;
            gone = true;
        }
    };
    std::atomic<bool> onMainThread = false;
    for (int round = 0; round < 50; ++round) {
        std::atomic<bool> gone = false;
        {
            auto witness = std::make_shared<Witness>(Witness{gone, onMainThread});
            gone = false;
            onMainThread = false;
            GstQueuePlayer other([held = std::move(witness)] { return makeSystemSoundSink(); });
        }
        ASSERT_TRUE(eventually([&gone] { return gone.load(); }));
        ASSERT_FALSE(onMainThread) << "round " << round;
    }
}

TEST_F(PlayerTest, showsTheLastPictureInTheNewSizeWhenItChangesAfterTheEnd)
{
    for (auto action : {QueuePlayer::ActionAtItemEnd::none, QueuePlayer::ActionAtItemEnd::pause}) {
        player->setActionAtItemEnd(action);
        player->setVideoSize(320, 180);
        loop(longInterval.file(), 7, 7.2);
        player->play();
        ASSERT_TRUE(output->waitForNumber(213));
        double last = 0;
        const auto token =
            player->addPeriodicTimeObserver(at(0.05), [&last](MediaTime time) { last = time.seconds(); });
        looper->disableLooping();
        ASSERT_TRUE(eventually([&last] { return std::abs(last - 7.2) < 0.001; }));
        output->forget();
        player->setVideoSize(160, 90);
        ASSERT_TRUE(output->waitForCount(1));
        EXPECT_EQ(output->shown().back().width, 160);
        // Long enough for a player that begins again to get somewhere.
        EXPECT_FALSE(eventually([this] { return output->current() != 215; }, std::chrono::milliseconds(300)));
        player->removeTimeObserver(token);
    }
}

TEST_F(PlayerTest, hasOthersWaitFromWhenAFrameIsAskedForUntilItIsShown)
{
    const auto othersWait = [] {
        std::chrono::nanoseconds patience(1);
        waitForForegroundWork({}, patience);
        return patience.count() == 0;
    };
    int waited = 0;
    for (int round = 0; round < 5; ++round) {
        loop(longInterval.file(), 7, 8);
        waited += othersWait();
        EXPECT_TRUE(eventually([&] { return !othersWait(); }));
        EXPECT_TRUE(output->waitForNumber(210));
        player->removeAllItems();
        EXPECT_FALSE(othersWait());
    }
    // Not each time, as a busy machine may show the frame before this thread goes on.
    EXPECT_GT(waited, 0);
}

TEST_F(PlayerTest, canBeDroppedAtAnyMoment)
{
    for (int round = 0; round < 12; ++round) {
        auto other = playback.makePlayer();
        other->setMuted(true);
        other->setVideoOutput(output);
        auto held = playback.makeLooper(other, PlayerItem{longInterval.file()}, range(7, 8));
        if (round % 3 > 0)
            other->play();
        if (round % 3 > 1)
            output->waitForCount(static_cast<std::size_t>(round));
        held.reset();
        other.reset();
        output->forget();
    }
}

} // namespace stackreel
