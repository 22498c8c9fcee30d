#include "tests/player/OpenFiles.h"
#include "tests/player/PlayerTest.h"
#include "tests/player/Repetition.h"
#include "tests/player/SoundPlaying.h"
#include "tests/support/Awaited.h"

#include <chrono>

namespace stackreel
{

namespace
{

constexpr PlayerDelays soon{.idle = std::chrono::milliseconds(50)};

class PlayerRestTest : public PlayerTest
{
protected:
    PlayerRestTest()
    {
        player = std::make_shared<GStreamerPlayer>(makeSystemSoundSink, soon);
        player->setMuted(true);
        player->setVideoOutput(output);
        output->forget(); // the player before has cleared it
    }

    bool closes(const std::filesystem::path& path)
    {
        return eventually([&path] { return !isOpen(path); });
    }
    /// Plays from 2 to 9 seconds, pauses, and waits until the file is closed.
    void rest()
    {
        loop(file, 2, 9);
        player->play();
        ASSERT_TRUE(output->waitForCount(10));
        player->pause();
        ASSERT_TRUE(eventually([this] { return player->state().kind == PlayerState::Kind::paused; }));
        ASSERT_TRUE(closes(file));
    }

    const std::filesystem::path file = longInterval.file();
};

using RestingSoundTest = SoundPlaying;

} // namespace

TEST_F(PlayerRestTest, ClosesTheFileAfterAPauseAndPlaysOnWithTheNextFrame)
{
    rest();
    EXPECT_EQ(output->current(), output->numbers().back()) << "the picture stays";
    EXPECT_GE(output->current(), 60);
    player->play();
    ASSERT_TRUE(output->waitForCount(130)) << "more than are queued";
    EXPECT_EQ(output->numbers().front(), 60);
    EXPECT_TRUE(repeats(output->numbers(), 60, 269));
}

TEST_F(PlayerRestTest, ShowsTheExactFrameOfASeekAfterTheFileWasClosed)
{
    rest();
    for (double time : {8.35, 2.0, 9.5, 4.99}) {
        seek(time);
        EXPECT_TRUE(output->waitForNumber(static_cast<int>(time * 30 + 0.02))) << time;
        EXPECT_TRUE(closes(file)) << time;
    }
}

TEST_F(PlayerRestTest, ShowsQueuedFramesOfASeekWithoutDecodingThemAgain)
{
    const MarkedClip fast{.name = "fast.mp4", .frames = 300, .rate = 60, .keyInterval = 250};
    const auto copy = truncatedCopy(file, "gop250-replaced.mp4", 1U << 30);
    loop(copy, 2, 9);
    seek(5);
    ASSERT_TRUE(output->waitForNumber(150));
    ASSERT_TRUE(closes(copy));
    // Of this file, other numbers would be shown.
    std::filesystem::copy_file(fast.file(), copy, std::filesystem::copy_options::overwrite_existing);
    for (int number : {151, 152, 160}) {
        seek(number / 30.0);
        ASSERT_TRUE(output->waitForNumber(number)) << number;
    }
}

TEST_F(PlayerRestTest, OpensAnotherRangeAfterTheFileWasClosed)
{
    rest();
    loop(file, 7, 7.5);
    ASSERT_TRUE(output->waitForNumber(210));
    EXPECT_TRUE(closes(file));
    player->play();
    output->forget();
    ASSERT_TRUE(output->waitForCount(40));
    EXPECT_TRUE(repeats(output->numbers(), 210, 224));
}

TEST_F(PlayerRestTest, ClosesAFileThatWasNeverPlayedOrCannotBe)
{
    loop(file, 3, 9);
    ASSERT_TRUE(output->waitForNumber(90));
    EXPECT_TRUE(closes(file));
    const auto text = plainFile("words.mp4", "no film at all, only words and words and words");
    loop(text, 0, 1);
    ASSERT_TRUE(eventually([this] { return player->state().kind == PlayerState::Kind::failed; }));
    EXPECT_TRUE(closes(text));
}

TEST_F(RestingSoundTest, ClosesTheFileAndReturnsInSync)
{
    player = std::make_shared<GStreamerPlayer>([captured = sound] { return captured->makeSink(); }, soon);
    player->setVideoOutput(output);
    loop(soundRamp.file(), 0, 4);
    player->play();
    ASSERT_TRUE(receivesSound(3));
    player->pause();
    ASSERT_TRUE(eventually([] { return !isOpen(soundRamp.file()); }));
    EXPECT_EQ(sound->openSinks(), 0);
    output->forget();
    sound->forget();
    player->play();
    ASSERT_TRUE(receivesSound(20));
    player->pause();
    expectInSync();
}

} // namespace stackreel
