#include "updates/UpdateStore.h"

#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryDirectory.h"

#include <QFile>
#include <QLockFile>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <barrier>
#include <string>
#include <thread>

namespace stackreel
{

using namespace std::chrono_literals;

TEST(UpdateStore, KeepsItsValuesBetweenRunsAndCreatesItsFolder)
{
    const TemporaryDirectory folder;
    const auto file = folder / "state/stackreel/updates.ini";
    const UpdateStore::Time time(1'789'000'000s);
    {
        UpdateStore store(file);
        EXPECT_FALSE(store.lastCheck());
        EXPECT_EQ(store.newestSerial(), 0);
        store.setLastCheck(time + 300ms);
        store.setNewestSerial(INT64_MAX);
    }
    const UpdateStore store(file);
    EXPECT_EQ(store.lastCheck(), time);
    EXPECT_EQ(store.newestSerial(), INT64_MAX);
}

TEST(UpdateStore, KeepsAHigherSerial)
{
    const TemporaryDirectory folder;
    UpdateStore store(folder / "updates.ini");
    store.setNewestSerial(7);
    store.setNewestSerial(5);
    EXPECT_EQ(store.newestSerial(), 7);
}

TEST(UpdateStore, TreatsABrokenFileAsEmpty)
{
    const TemporaryDirectory folder;
    for (const char* content :
         {"nonsense", "[General]\nlastCheck=soon\nnewestSerial=many\n",
          "[General]\nlastCheck=-5\nnewestSerial=-5\n",
          "[General]\nlastCheck=9223372036854775807\nnewestSerial=9223372036854775808\n",
          "[General]\nlastCheck=1, 2\nnewestSerial=@Variant(x)\n", "\xFF\xFE\x01\x02"}) {
        const UpdateStore store(folder.write("updates.ini", content));
        EXPECT_FALSE(store.lastCheck()) << content;
        EXPECT_EQ(store.newestSerial(), 0) << content;
    }
}

TEST(UpdateStore, KeepsItsValuesInMemoryWhenItCannotWrite)
{
    UpdateStore store("/proc/none/updates.ini");
    store.setNewestSerial(7);
    store.setLastCheck(UpdateStore::Time(1s));
    EXPECT_EQ(store.newestSerial(), 7);
    EXPECT_EQ(store.lastCheck(), UpdateStore::Time(1s));
}

TEST(UpdateStore, KeepsTheSerialWhenItsFileIsRemoved)
{
    const TemporaryDirectory folder;
    UpdateStore store(folder / "updates.ini");
    store.setNewestSerial(7);
    std::filesystem::remove(folder / "updates.ini");
    EXPECT_EQ(store.newestSerial(), 7);
    store.setLastCheck(UpdateStore::Time(1s));
    EXPECT_EQ(UpdateStore(folder / "updates.ini").newestSerial(), 7);
}

TEST(UpdateStore, SharesItsFileWithOtherPrograms)
{
    const TemporaryDirectory folder;
    UpdateStore store(folder / "updates.ini");
    UpdateStore other(folder / "updates.ini");
    store.setNewestSerial(7);
    other.setLastCheck(UpdateStore::Time(1s));
    other.setNewestSerial(5);
    EXPECT_EQ(store.lastCheck(), UpdateStore::Time(1s));
    EXPECT_EQ(other.newestSerial(), 7);
}

TEST(UpdateStore, KeepsWhatTwoProgramsWriteAtTheSameTime)
{
    const TemporaryDirectory folder;
    for (int round = 0; round < 10; ++round) {
        const auto file = folder / (std::to_string(round) + ".ini");
        std::barrier begin(2);
        std::thread other([&] {
            UpdateStore store(file);
            begin.arrive_and_wait();
            store.setNewestSerial(7);
        });
        UpdateStore store(file);
        begin.arrive_and_wait();
        store.setLastCheck(UpdateStore::Time(1s));
        other.join();
        const UpdateStore written(file);
        EXPECT_EQ(written.newestSerial(), 7) << round;
        EXPECT_EQ(written.lastCheck(), UpdateStore::Time(1s)) << round;
    }
}

TEST(UpdateStore, WritesLaterWhatItKeptInMemoryWhileAnotherProgramHeldTheLock)
{
    const TemporaryDirectory folder;
    const auto file = folder / "updates.ini";
    UpdateStore store(file);
    {
        QLockFile lock(QFile::decodeName((file.string() + ".lock").c_str()));
        ASSERT_TRUE(lock.tryLock());
        store.setNewestSerial(7);
        EXPECT_EQ(store.newestSerial(), 7);
        EXPECT_EQ(UpdateStore(file).newestSerial(), 0);
    }
    store.setLastCheck(UpdateStore::Time(1s));
    EXPECT_EQ(UpdateStore(file).newestSerial(), 7);
}

TEST(UpdateStore, DoesNotBlockOnAPipeOrALock)
{
    // Opening a named pipe without a writer would block. The lock file may be left by another process.
    const TemporaryDirectory folder;
    folder.write("locked.ini.lock", std::to_string(::getpid()) + "\nother\nelsewhere\n");
    ASSERT_EQ(::mkfifo((folder / "pipe.ini").c_str(), 0600), 0);
    for (const char* name : {"locked.ini", "pipe.ini"}) {
        UpdateStore store(folder / name);
        store.setNewestSerial(7);
        EXPECT_EQ(store.newestSerial(), 7) << name;
    }
}

TEST(UpdateStore, IsInTheUsersStateFolder)
{
    {
        const ScopedEnvironment state("XDG_STATE_HOME", "/some/state");
        EXPECT_EQ(UpdateStore::standardFile(), "/some/state/stackreel/updates.ini");
    }
    const ScopedEnvironment home("HOME", "/some/home");
    for (const char* invalid : {"", "relative/state"}) {
        const ScopedEnvironment state("XDG_STATE_HOME", invalid);
        EXPECT_EQ(UpdateStore::standardFile(), "/some/home/.local/state/stackreel/updates.ini");
    }
    const ScopedEnvironment state("XDG_STATE_HOME", "");
    const ScopedEnvironment nowhere("HOME", "");
    EXPECT_EQ(UpdateStore::standardFile(), "/.local/state/stackreel/updates.ini")
        << "never in the working directory";
}

} // namespace stackreel
