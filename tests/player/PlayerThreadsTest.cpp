#include "tests/player/PlayerTest.h"
#include "tests/player/StuckFile.h"
#include "tests/support/Awaited.h"

#include <atomic>
#include <thread>

namespace stackreel
{

namespace
{

using PlayerThreads = PlayerTest;

} // namespace

// The player handles its commands in order on one thread, which here blocks in opening the file. A call that
// waits for that thread would block until the file unblocks itself.
TEST_F(PlayerThreads, DoNotBlockAnyCallWhileAFileDoesNotOpen)
{
    const auto file = longInterval.file();
    StuckFile stuck;
    loop(stuck.path(), 0, 1);
    ASSERT_TRUE(eventually([&stuck] { return stuck.isWaitedFor(); }));
    for (int round = 0; round < 20; ++round) {
        loop(file, 5, 9);
        player->play();
        seek(5 + round * 0.1);
        player->setVideoSize(300 - round, 180);
        player->setMuted(round % 2 == 0);
        player->pause();
        player->setVideoOutput(nullptr);
        player->setVideoOutput(output);
        player->removeTimeObserver(player->addPeriodicTimeObserver(at(0.05), [](MediaTime) {}));
        player->close();
    }
    for (int number : output->numbers())
        EXPECT_EQ(number, -1) << "the file did not block the player";
    loop(file, 7, 8);
    EXPECT_TRUE(stuck.unblock()) << "a call blocked";
    EXPECT_TRUE(output->waitForNumber(210));
}

TEST_F(PlayerThreads, DoNotBlockTheDestructorWhileAFileDoesNotOpen)
{
    StuckFile stuck;
    loop(stuck.path(), 0, 1);
    ASSERT_TRUE(eventually([&stuck] { return stuck.isWaitedFor(); }));
    player.reset();
    EXPECT_TRUE(stuck.unblock()) << "a call blocked";
}

TEST_F(PlayerThreads, DestroyTheEngineOffTheMainThread)
{
    /// Destroyed with the player's engine.
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
            GStreamerPlayer other([held = std::move(witness)] { return makeSystemSoundSink(); });
        }
        ASSERT_TRUE(eventually([&gone] { return gone.load(); }));
        ASSERT_FALSE(onMainThread) << "round " << round;
    }
}

TEST_F(PlayerThreads, EndWithThePlayerAtAnyMoment)
{
    for (int round = 0; round < 12; ++round) {
        auto other = std::make_shared<GStreamerPlayer>();
        other->setMuted(true);
        other->setVideoOutput(output);
        other->open(longInterval.file(), range(7, 8));
        if (round % 3 > 0)
            other->play();
        if (round % 3 > 1)
            output->waitForCount(static_cast<std::size_t>(round));
        other.reset();
        output->forget();
    }
}

} // namespace stackreel
