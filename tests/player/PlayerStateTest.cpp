#include "tests/player/PlayerTest.h"
#include "tests/player/StuckFile.h"
#include "tests/support/Awaited.h"

namespace stackreel
{

namespace
{

using Kind = PlayerState::Kind;

class PlayerStateTest : public PlayerTest
{
protected:
    bool becomes(Kind kind)
    {
        return eventually([this, kind] { return player->state().kind == kind; });
    }
    /// Opens a file that is not a video, waits until it has failed, and replaces it by a video.
    void openBeforeItIsAVideo(const std::string& name)
    {
        const auto file = plainFile(name, "no film at all, only words and words and words");
        loop(file, 1, 2);
        ASSERT_TRUE(becomes(Kind::failed));
        std::filesystem::copy_file(shortInterval.file(), file,
                                   std::filesystem::copy_options::overwrite_existing);
    }
};

} // namespace

TEST_F(PlayerStateTest, IsWaitingUntilTheFileOpensThenPausedOrPlaying)
{
    EXPECT_EQ(player->state().kind, Kind::empty);
    StuckFile stuck;
    loop(stuck.path(), 0, 1);
    ASSERT_TRUE(eventually([&stuck] { return stuck.isWaitedFor(); }));
    EXPECT_EQ(player->state().kind, Kind::waiting);
    loop(shortInterval.file(), 1, 2);
    EXPECT_TRUE(stuck.unblock());
    EXPECT_TRUE(becomes(Kind::paused));
    EXPECT_TRUE(output->waitForNumber(30));
    player->play();
    EXPECT_TRUE(becomes(Kind::playing));
    player->pause();
    EXPECT_TRUE(becomes(Kind::paused));
    player->close();
    EXPECT_EQ(player->state(), PlayerState());
}

TEST_F(PlayerStateTest, HasAReasonWhenAFileCannotBeShown)
{
    const MarkedClip soundOnly{
        .name = "sound-only.m4a", .frames = 30, .sound = true, .output = "-map 1:a -t 1"};
    const std::filesystem::path files[] = {
        plainFile("text.mp4", "no film at all, only words and words and words"),
        plainFile("empty.mp4", ""),
        "/nowhere/missing.mp4",
        soundOnly.file(),
    };
    for (const auto& file : files) {
        loop(file, 0, 1);
        ASSERT_TRUE(becomes(Kind::failed)) << file;
        EXPECT_NE(player->state().reason, "") << file;
        loop(shortInterval.file(), 1, 2);
        EXPECT_TRUE(becomes(Kind::paused));
        EXPECT_EQ(player->state().reason, "");
    }
}

TEST_F(PlayerStateTest, OpensTheFileAgainAtASeekAfterAFailure)
{
    openBeforeItIsAVideo("sought-later.mp4");
    seek(1.5);
    EXPECT_TRUE(output->waitForNumber(45));
    EXPECT_TRUE(becomes(Kind::paused));
}

TEST_F(PlayerStateTest, OpensTheFileAgainAtPlayAfterAFailure)
{
    openBeforeItIsAVideo("played-later.mp4");
    player->play();
    EXPECT_TRUE(output->waitForNumber(40));
    EXPECT_TRUE(becomes(Kind::playing));
}

} // namespace stackreel
