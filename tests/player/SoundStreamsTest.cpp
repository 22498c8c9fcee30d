#include "tests/player/BrokenSound.h"
#include "tests/player/MarkedClip.h"
#include "tests/player/Repetition.h"
#include "tests/player/SoundPlaying.h"
#include "tests/support/Awaited.h"

#include <algorithm>
#include <cmath>

namespace stackreel
{

namespace
{

MarkedClip rampClip(const std::string& name, const std::string& tone, const std::string& options)
{
    MarkedClip clip = soundRamp;
    clip.name = name;
    clip.tone = tone;
    clip.output += " " + options;
    return clip;
}

const MarkedClip shorter = rampClip("sound_shorter.mov", "aevalsrc='t/16|t/16':s=48000:d=2", "-noshortest");
const MarkedClip longer = [] {
    MarkedClip clip =
        rampClip("sound_longer.mov", soundRamp.tone, R"(-bf 0 -bsf:v "noise=drop='gte(n\,120)'")");
    clip.frames = 180;
    return clip;
}();
const MarkedClip later = rampClip("sound_later.mov", "aevalsrc='(t+1)/16|(t+1)/16':s=48000:d=3",
                                  "-af asetpts=PTS+1/TB -noshortest");
const MarkedClip streamed = rampClip("sound_streamed.mkv", soundRamp.tone, "");

class SoundStreamsTest : public SoundPlaying
{
protected:
    /// Plays until this many frames were shown, and pauses.
    void playFrames(std::size_t count)
    {
        player->play();
        ASSERT_TRUE(output->waitForCount(count));
        player->pause();
    }
};

} // namespace

TEST_F(SoundStreamsTest, PlaysSoundThatEndsBeforeTheVideo)
{
    loop(shorter.file(), 1.6, 2.2);
    playFrames(60);
    EXPECT_TRUE(repeats(output->numbers(), 48, 65));
    expectRuns(1.6, 2, 2);
    expectInSync();
}

TEST_F(SoundStreamsTest, PlaysNoSoundThatEndsBeforeTheRange)
{
    loop(shorter.file(), 3, 3.4);
    playFrames(30);
    EXPECT_TRUE(repeats(output->numbers(), 90, 101));
    EXPECT_TRUE(sound->stretches().empty());
}

TEST_F(SoundStreamsTest, PlaysSoundThatEndsAfterTheVideo)
{
    loop(longer.file(), 3.6, 4.4);
    playFrames(40);
    EXPECT_TRUE(repeats(output->numbers(), 108, 119));
    expectInSync();
    for (const auto& stretch : sound->stretches())
        EXPECT_GE(stretch.from, 3.599);
}

TEST_F(SoundStreamsTest, PlaysSoundThatBeginsAfterTheVideo)
{
    loop(later.file(), 0.7, 1.3);
    playFrames(60);
    EXPECT_TRUE(repeats(output->numbers(), 21, 38));
    expectRuns(1, 1.3, 2);
    expectInSync();
}

TEST_F(SoundStreamsTest, PlaysTheSoundOfATruncatedFileInEachRun)
{
    const auto whole = streamed.file();
    const auto size = std::filesystem::file_size(whole);
    loop(truncatedCopy(whole, "sound_truncated.mkv", size * 6 / 10), 1.8, 3);
    playFrames(60);
    std::vector<CapturedSound::Stretch> begun;
    for (const auto& stretch : sound->stretches())
        if (std::abs(stretch.from - 1.8) < 0.001)
            begun.push_back(stretch);
    EXPECT_GE(begun.size(), 3U);
    expectInSync();
}

TEST_F(SoundStreamsTest, PlaysTheSoundBeforeACorruptPartInEachRun)
{
    const auto whole = streamed.file();
    loop(corruptedCopy(whole, "sound_spoiled.mkv", std::filesystem::file_size(whole) / 2, 20000), 1, 3);
    player->play();
    for (int run = 0; run < 3; ++run) {
        EXPECT_TRUE(eventually([&] {
            for (const auto& stretch : sound->stretches())
                if (stretch.from > 1 && stretch.to < 1.5)
                    return true;
            return false;
        }));
        sound->forget();
        ASSERT_TRUE(output->waitFor([run](const auto& shown) {
            return std::count_if(shown.begin(), shown.end(),
                                 [](const auto& frame) { return frame.number == 30; }) > run + 1;
        })) << "the range begins again";
    }
}

TEST_F(SoundStreamsTest, PlaysWithoutSoundWhenTheSoundIsBroken)
{
    for (const auto& file : clipsOfBrokenSound()) {
        output->forget();
        // The file may begin with sound, up to one packet before the video.
        loop(file, 1.03, 1.5);
        playFrames(40);
        EXPECT_TRUE(repeats(output->numbers(), 30, 44)) << file;
        player->close();
        ASSERT_TRUE(output->waitForNumber(-1));
    }
}

} // namespace stackreel
