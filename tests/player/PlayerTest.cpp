#include "tests/player/PlayerTest.h"

#include "tests/player/OpenFiles.h"
#include "tests/player/Repetition.h"
#include "tests/support/Awaited.h"

#include <algorithm>

namespace stackreel
{

namespace
{

const MarkedClip fast{.name = "fast.mp4", .frames = 300, .rate = 60, .keyInterval = 250};
const MarkedClip variableRate{.name = "variable.mp4", .frames = 120, .keyInterval = 40, .variable = true};
const MarkedClip clipWithSound{.name = "sounding.mp4", .frames = 120, .keyInterval = 250, .sound = true};

} // namespace

TEST_F(PlayerTest, RepeatsARangeWithoutLosingOrDoublingAFrame)
{
    const struct {
        const MarkedClip& clip;
        double start, end;
        int first, last;
    } rows[] = {
        {longInterval, 7, 7.1, 210, 212}, {longInterval, 8, 8.25, 240, 247},
        {longInterval, 4, 4.7, 120, 140}, {shortInterval, 2.95, 3.55, 88, 106},
        {fast, 3, 3.5, 180, 209},         {variableRate, 2, 2.5, 60, 74},
        {clipWithSound, 1.5, 2, 45, 59},
    };
    for (const auto& row : rows) {
        output->forget();
        loop(row.clip.file(), row.start, row.end);
        player->play();
        const auto frames = static_cast<std::size_t>(row.last - row.first + 1);
        ASSERT_TRUE(output->waitForCount(std::max(3 * frames, std::size_t{12}))) << row.clip.name;
        player->close();
        ASSERT_TRUE(output->waitForNumber(-1));
        std::vector<int> numbers = output->numbers();
        numbers.pop_back();
        EXPECT_EQ(numbers.front(), row.first);
        EXPECT_TRUE(repeats(numbers, row.first, row.last)) << row.clip.name << " from " << row.start;
    }
}

TEST_F(PlayerTest, ClosesTheFileWhileARangeRepeatsFromMemory)
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

TEST_F(PlayerTest, ReplacesTheRangeWithoutLosingThePicture)
{
    loop(longInterval.file(), 7, 7.5);
    player->play();
    ASSERT_TRUE(output->waitForNumber(224));
    reopen(longInterval.file(), 7.2, 7.5, 7.2);
    ASSERT_TRUE(output->waitForNumber(216));
    ASSERT_TRUE(output->waitForNumber(224));
    reopen(longInterval.file(), 7.2, 7.4, 7.4 - 1.0 / 30);
    ASSERT_TRUE(output->waitForNumber(221));
    output->forget();
    ASSERT_TRUE(output->waitForCount(30));
    const auto numbers = output->numbers();
    EXPECT_TRUE(repeats(numbers, 216, 221));
    for (int number : numbers)
        EXPECT_GE(number, 0);
}

TEST_F(PlayerTest, RepeatsKeptFramesWithoutTheFileWhenTheRangeEndsEarlier)
{
    const auto file = truncatedCopy(longInterval.file(), "gop250-emptied.mp4", 1U << 30);
    loop(file, 4, 4.5);
    player->play();
    ASSERT_TRUE(output->waitForNumber(134));
    ASSERT_TRUE(output->waitForNumber(120));
    player->pause();
    seek(4.2 - 1.0 / 30);
    ASSERT_TRUE(output->waitForNumber(125));
    std::filesystem::resize_file(file, 0);
    reopen(file, 4, 4.2, 4.2 - 1.0 / 30);
    ASSERT_TRUE(output->waitForNumber(121));
    output->forget();
    ASSERT_TRUE(output->waitForCount(20));
    EXPECT_TRUE(repeats(output->numbers(), 120, 125));
}

TEST_F(PlayerTest, ClearsThePictureWhenItIsClosed)
{
    loop(shortInterval.file(), 0, 1);
    ASSERT_TRUE(output->waitForNumber(0));
    player->close();
    EXPECT_TRUE(output->waitForNumber(-1));
    loop(shortInterval.file(), 3, 4);
    EXPECT_TRUE(output->waitForNumber(90));
}

TEST_F(PlayerTest, ScalesToTheShownSizeWithoutLosingAFrame)
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

TEST_F(PlayerTest, ShowsNothingForAnUnplayableFileAndPlaysTheNext)
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

} // namespace stackreel
