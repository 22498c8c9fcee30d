#include "player/GStreamerPlayer.h"
#include "tests/player/CollectingOutput.h"
#include "tests/player/ExportedFrame.h"
#include "tests/player/MarkedClip.h"
#include "tests/player/PictureOutput.h"
#include "tests/player/Quarters.h"
#include "tests/player/Repetition.h"
#include "tests/support/Awaited.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace stackreel
{

namespace
{

VideoFrame exportedUpright(const std::filesystem::path& file, bool swapped)
{
    return exportedFrame(file, 0, swapped ? 180 : 320, swapped ? 320 : 180);
}

class UnusualClipsTest : public testing::Test
{
protected:
    UnusualClipsTest()
    {
        player->setMuted(true);
        player->setVideoOutput(output);
    }

    void loop(const std::filesystem::path& file, double start, double end)
    {
        player->open(file, {MediaTime::fromSeconds(start), MediaTime::fromSeconds(end - start)});
        player->play();
    }
    /// Waits until the range has wrapped this many times. Frames that cannot be decoded may be missing.
    bool beginsAgain(int times) const
    {
        return output->waitFor([times](const auto& shown) {
            int wraps = 0;
            for (std::size_t i = 1; i < shown.size(); ++i)
                wraps += shown[i].seconds < shown[i - 1].seconds;
            return wraps >= times;
        });
    }
    /// Closes the player and returns the numbers shown until then.
    std::vector<int> numbersUntilClosed()
    {
        player->close();
        EXPECT_TRUE(output->waitForNumber(-1));
        std::vector<int> numbers = output->numbers();
        output->forget();
        numbers.pop_back();
        return numbers;
    }

    std::shared_ptr<PreviewPlayer> player = std::make_shared<GStreamerPlayer>();
    std::shared_ptr<CollectingOutput> output = std::make_shared<CollectingOutput>();
};

const MarkedClip plain{.name = "whole.mp4", .frames = 120, .keyInterval = 30};

} // namespace

TEST_F(UnusualClipsTest, RotatesAndMirrorsAsTheExportDoesInEveryRun)
{
    for (std::size_t i = 0; i < allOrientations.size(); ++i) {
        const auto file = rotatedCopy(quartersClip.file(), "played-quarters-" + std::to_string(i) + ".mp4",
                                      allOrientations.at(i));
        const auto pictures = std::make_shared<PictureOutput>();
        player = std::make_shared<GStreamerPlayer>(); // a new player has no picture of the previous clip
        player->setMuted(true);
        player->setVideoOutput(pictures);
        player->setVideoSize(320, 320);
        loop(file, 0, quartersClip.duration());
        const std::size_t enough = 12; // the clip has five frames, so this covers several runs
        ASSERT_TRUE(eventually([&] { return pictures->pictures().size() >= enough; }));
        player->setVideoOutput(nullptr);
        const VideoFrame exported = exportedUpright(file, allOrientations.at(i)[0] == 0);
        for (const VideoFrame& shown : pictures->pictures()) {
            ASSERT_EQ(shown.width, exported.width) << "turn " << i;
            ASSERT_EQ(shown.height, exported.height) << "turn " << i;
            for (std::size_t quarter = 0; quarter < 4; ++quarter)
                EXPECT_NEAR(quarters(shown).at(quarter), quarters(exported).at(quarter), 6) << "turn " << i;
        }
    }
}

TEST_F(UnusualClipsTest, RepeatsARangeInEveryContainer)
{
    const struct {
        const char* name;
        const char* output;
    } rows[] = {
        {"container.mov", ""},
        {"container.mkv", ""},
        {"container.avi", ""},
        {"container.webm", "-c:v libvpx -deadline realtime -b:v 2M -g 30"},
        {"container.ts", ""},
        {"container.flv", ""},
        {"jpeg.mov", "-c:v mjpeg -bf 0 -pix_fmt yuvj420p"},
        {"png.mov", "-c:v png -bf 0 -pix_fmt rgb24"},
        {"interlaced.mp4", "-flags +ildct+ilme -top 1"},
        {"pq.mkv", "-c:v ffv1 -g 30 -bf 0 -pix_fmt yuv420p10le -color_trc smpte2084 -color_primaries bt2020"},
    };
    for (const auto& row : rows) {
        const MarkedClip clip{.name = row.name, .frames = 120, .keyInterval = 30, .output = row.output};
        loop(clip.file(), 1, 1.5);
        ASSERT_TRUE(beginsAgain(4)) << row.name;
        const std::vector<int> numbers = numbersUntilClosed();
        EXPECT_EQ(numbers.front(), 30) << row.name;
        EXPECT_TRUE(repeats(numbers, 30, 44)) << row.name;
    }
}

TEST_F(UnusualClipsTest, RepeatsAClipWhoseVideoBeginsLate)
{
    // The sound begins at 0, the pictures at 0.77 s.
    const MarkedClip late{.name = "late-picture-pcm.mkv",
                          .frames = 60,
                          .keyInterval = 30,
                          .sound = true,
                          .delay = 0.77,
                          .output = "-c:a pcm_s16le"};
    loop(late.file(), 0, 0.95);
    ASSERT_TRUE(beginsAgain(4));
    EXPECT_TRUE(repeats(numbersUntilClosed(), 0, 5));
}

TEST_F(UnusualClipsTest, RepeatsTheReadablePartOfADamagedClip)
{
    const MarkedClip front{
        .name = "front.mp4", .frames = 120, .keyInterval = 30, .output = "-movflags +faststart"};
    const auto size = std::filesystem::file_size(plain.file());
    const auto frontSize = std::filesystem::file_size(front.file());
    const std::filesystem::path files[] = {
        corruptedCopy(plain.file(), "damaged-middle.mp4", size / 3, size / 8),
        corruptedCopy(front.file(), "damaged-tail.mp4", frontSize * 4 / 5, frontSize),
        truncatedCopy(front.file(), "missing-tail.mp4", frontSize * 3 / 4),
    };
    for (const auto& file : files) {
        loop(file, 0.5, 4);
        EXPECT_TRUE(beginsAgain(2)) << file;
        const std::vector<int> numbers = numbersUntilClosed();
        EXPECT_EQ(numbers.front(), 15) << file;
    }
}

TEST_F(UnusualClipsTest, RepeatsAClipThatClaimsToBeLonger)
{
    // Change the durations of the movie and the track in the header from 4,000 ms to 10,000 ms.
    const std::string four("\0\0\x0f\xa0", 4);
    const std::string ten("\0\0\x27\x10", 4);
    loop(renamedCodec(plain.file(), "lying.mp4", four, ten), 3.5, 10);
    ASSERT_TRUE(beginsAgain(3));
    EXPECT_TRUE(repeats(numbersUntilClosed(), 105, 119));
}

TEST_F(UnusualClipsTest, ShowsNothingForAClipWithoutFramesAndPlaysTheNext)
{
    const MarkedClip none{.name = "no-picture.mkv", .frames = 30, .output = "-t 0"};
    int reports = 0;
    player->addPeriodicTimeObserver(MediaTime::fromSeconds(0.05),
                                    [&](MediaTime time) { reports += time == MediaTime::indefinite(); });
    loop(none.file(), 0, 1);
    EXPECT_TRUE(eventually([&] { return reports > 0; }));
    loop(plain.file(), 1, 2);
    EXPECT_TRUE(output->waitForNumber(40));
}

} // namespace stackreel
