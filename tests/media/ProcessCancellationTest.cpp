#include "media/CancellationError.h"
#include "media/ProcessRunner.h"
#include "media/ProcessSession.h"
#include "tests/media/RunnerTest.h"
#include "tests/support/ChildReport.h"
#include "tests/support/ScopedSystemCalls.h"

#include <csignal>
#include <functional>
#include <thread>

namespace stackreel
{

namespace
{

using ProcessCancellationTest = RunnerTest;

// Called by the replaced system calls below. It is global because these are plain functions, which cannot
// capture anything.
std::function<void()> hook;
int launches;

int posixSpawnWithHook(pid_t* pid, const char* path, const posix_spawn_file_actions_t* actions,
                       const posix_spawnattr_t* attributes, char* const arguments[],
                       char* const environment[])
{
    ++launches;
    if (hook)
        hook();
    return ::posix_spawn(pid, path, actions, attributes, arguments, environment);
}

/// Calls the hook after the child has ended and before `waitid` returns.
int waitidWithHook(idtype_t type, id_t id, siginfo_t* info, int options)
{
    const int result = ::waitid(type, id, info, options);
    if ((options & WNOWAIT) != 0)
        hook();
    return result;
}

int fsyncWithHook(int descriptor)
{
    hook();
    return ::fsync(descriptor);
}

} // namespace

TEST_F(ProcessCancellationTest, NeverStartsTheChildWhenCancelledBeforeTheCall)
{
    ScopedSystemCalls calls;
    launches = 0;
    hook = {};
    calls->posixSpawn = posixSpawnWithHook;
    std::stop_source source;
    source.request_stop();
    bool launched = false;
    EXPECT_THROW(runToEnd(ProcessRunner::run(testChild(), {"touch", marker()}, source.get_token(),
                                             [&launched](const std::filesystem::path&) { launched = true; })),
                 CancellationError);
    EXPECT_EQ(launches, 0);
    EXPECT_FALSE(launched);
    EXPECT_FALSE(isMarked());
}

TEST_F(ProcessCancellationTest, IsReportedInsteadOfAMissingProgramWhenCancelledBefore)
{
    std::stop_source source;
    source.request_stop();
    EXPECT_THROW(runToEnd(ProcessRunner::run("/no such/tool", {}, source.get_token())), CancellationError);
}

TEST_F(ProcessCancellationTest, EndsTheChildWhenCancelledWhileLaunching)
{
    ScopedSystemCalls calls;
    std::stop_source source;
    launches = 0;
    hook = [&source] { source.request_stop(); };
    calls->posixSpawn = posixSpawnWithHook;
    Awaited<ProcessOutput> running(run({"patient", m_directory / "pid", "1"}, source.get_token()));
    EXPECT_THROW(running.result(), CancellationError);
    EXPECT_EQ(launches, 1);
}

TEST_F(ProcessCancellationTest, EndsTheChildWhenCancelledWhileItRuns)
{
    std::stop_source source;
    auto running = startPatientChild(source.get_token(), {"1"});
    EXPECT_FALSE(running.hasEnded());
    source.request_stop();
    EXPECT_THROW(running.result(), CancellationError);
    EXPECT_EQ(terminateRequests(), "1");
}

TEST_F(ProcessCancellationTest, WaitsForAChildThatEndsLate)
{
    std::stop_source source;
    auto running = startPatientChild(source.get_token());
    source.request_stop();
    EXPECT_TRUE(eventually([this] { return terminateRequests() == "1"; }));
    EXPECT_FALSE(running.hasEnded()) << "the child still runs";
    EXPECT_EQ(scratchNames().size(), 1U);
    endPatientChild();
    EXPECT_THROW(running.result(), CancellationError) << "although it ended with status 0";
    EXPECT_EQ(terminateRequests(), "1");
}

TEST_F(ProcessCancellationTest, DiscardsTheOutputWhenCancelledRightAfterTheChildHasEnded)
{
    ScopedSystemCalls calls;
    std::stop_source source;
    hook = [&source] { source.request_stop(); };
    calls->waitid = waitidWithHook;
    EXPECT_THROW(runToEnd(run({"touch", marker()}, source.get_token())), CancellationError);
    EXPECT_TRUE(isMarked());
}

TEST_F(ProcessCancellationTest, HasNoEffectOnceTheChildIsReaped)
{
    ScopedSystemCalls calls;
    std::stop_source source;
    hook = [&source] { source.request_stop(); };
    calls->fsync = fsyncWithHook;
    EXPECT_EQ(runToEnd(run({"exit", "5"}, source.get_token())).status, 5);
    EXPECT_TRUE(source.stop_requested());
}

TEST_F(ProcessCancellationTest, HasNoEffectAfterTheRun)
{
    std::stop_source source;
    EXPECT_EQ(runToEnd(run({"exit", "5"}, source.get_token())).status, 5);
    source.request_stop();
}

TEST_F(ProcessCancellationTest, EndsAllRunsWithTheSameToken)
{
    std::stop_source source;
    std::vector<Awaited<ProcessOutput>> running;
    for (int child = 0; child < 10; ++child)
        running.emplace_back(
            run({"patient", m_directory / ("pid" + std::to_string(child)), "1"}, source.get_token()));
    EXPECT_TRUE(eventually([this] { return m_directory.names().size() == 10; }));
    source.request_stop();
    for (auto& run : running)
        EXPECT_THROW(run.result(), CancellationError);
}

TEST_F(ProcessCancellationTest, KillsAChildThatIgnoresTheRequestAfterTheGracePeriod)
{
    std::stop_source source;
    auto running = startPatientChild(source.get_token());
    source.request_stop();
    EXPECT_THROW(running.result(), CancellationError);
    EXPECT_EQ(terminateRequests(), "1");
}

TEST_F(ProcessCancellationTest, WorksFromAnyThreadAtAnyTime)
{
    int finished = 0;
    int cancelled = 0;
    for (int round = 0; round < 60; ++round) {
        std::stop_source source;
        Awaited<ProcessOutput> running(run({"exit", "0"}, source.get_token()));
        std::thread other([&source, round] {
            for (int spin = 0; spin < round; ++spin)
                std::this_thread::yield();
            source.request_stop();
        });
        try {
            finished += running.result().status == 0 ? 1 : 0;
        } catch (const CancellationError&) {
            ++cancelled;
        }
        other.join();
    }
    EXPECT_EQ(finished + cancelled, 60);
}

TEST_F(ProcessCancellationTest, CanBeRepeatedBeforeDuringAndAfterARun)
{
    ProcessSession early;
    early.cancel();
    early.cancel();
    EXPECT_THROW(early.run(testChild(), {"touch", marker()}), CancellationError);
    early.cancel();
    EXPECT_FALSE(isMarked());

    ProcessSession session;
    std::vector<std::thread> others;
    const auto cancelRepeatedly = [&session] {
        for (int times = 0; times < 100; ++times)
            session.cancel();
    };
    EXPECT_THROW(session.run(testChild(), {"patient", m_directory / "pid", "1"},
                             [&](const std::filesystem::path&) {
                                 for (int thread = 0; thread < 4; ++thread)
                                     others.emplace_back(cancelRepeatedly);
                             }),
                 CancellationError);
    for (std::thread& other : others)
        other.join();
}

TEST_F(ProcessCancellationTest, HoldsNoLockDuringSystemCalls)
{
    // `cancel` locks the session's mutex on the same thread: if the session held the mutex during one of
    // these calls, the test would hang.
    ScopedSystemCalls calls;
    ProcessSession session;
    static int kills;
    kills = 0;
    hook = [&session] { session.cancel(); };
    calls->posixSpawn = posixSpawnWithHook;
    calls->waitid = waitidWithHook;
    calls->kill = [](pid_t pid, int signal) {
        if (++kills == 1)
            hook();
        return ::kill(pid, signal);
    };
    EXPECT_THROW(session.run(testChild(), {"exit", "0"}), CancellationError);
    EXPECT_GE(kills, 2);

    ProcessSession finished;
    hook = [&finished] { finished.cancel(); };
    calls->posixSpawn = ::posix_spawn;
    calls->waitid = ::waitid;
    calls->fsync = fsyncWithHook;
    EXPECT_EQ(finished.run(testChild(), {"exit", "4"}).status, 4);
}

} // namespace stackreel
