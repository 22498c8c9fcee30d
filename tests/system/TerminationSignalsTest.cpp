#include "system/TerminationSignals.h"

#include "system/UnblockedSignals.h"
#include "tests/support/Awaited.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <future>
#include <string>

namespace stackreel
{

namespace
{

/// Restores the signal mask and dispositions after each test, because `TerminationSignals` does not restore
/// them.
class TerminationSignalsTest : public testing::Test
{
protected:
    TerminationSignalsTest() { ::pthread_sigmask(SIG_SETMASK, nullptr, &m_mask); }
    ~TerminationSignalsTest() override
    {
        ::signal(SIGPIPE, SIG_DFL);
        ::signal(SIGHUP, SIG_DFL);
        ::signal(SIGCHLD, SIG_DFL);
        ::pthread_sigmask(SIG_SETMASK, &m_mask, nullptr);
    }

    static bool requestsStopFor(int signal)
    {
        const TerminationSignals signals;
        std::promise<void> fired;
        const std::stop_callback callback(signals.stopToken(), [&fired] { fired.set_value(); });
        ::kill(::getpid(), signal);
        return fired.get_future().wait_for(ceiling) == std::future_status::ready &&
               signals.received() == signal;
    }

    /// Whether the receiving thread has received a signal, which is pending until then.
    static bool isReceived(int signal)
    {
        return eventually([signal] {
            sigset_t pending;
            ::sigpending(&pending);
            return sigismember(&pending, signal) == 0;
        });
    }

    /// The line with the blocked signals in the status of a program that is started without settings of its
    /// own, and so inherits those of this thread.
    static std::string blockedInANewProgram()
    {
        FILE* const program = ::popen("exec grep SigBlk /proc/self/status", "r");
        std::string line(64, '\0');
        line.resize(std::fread(line.data(), 1, line.size(), program));
        EXPECT_EQ(::pclose(program), 0);
        return line;
    }

    static auto dispositionOf(int signal)
    {
        struct sigaction current = {};
        ::sigaction(signal, nullptr, &current);
        return current.sa_handler;
    }

private:
    sigset_t m_mask{};
};

} // namespace

TEST_F(TerminationSignalsTest, TurnsEachRequestToEndIntoAStopRequest)
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT})
        EXPECT_TRUE(requestsStopFor(signal)) << signal;
}

TEST_F(TerminationSignalsTest, KnowsOfASignalAsSoonAsItIsSent)
{
    for (int round = 0; round < 500; ++round) {
        const TerminationSignals signals;
        EXPECT_FALSE(TerminationSignals::haveArrived());
        ::kill(::getpid(), SIGINT);
        EXPECT_TRUE(TerminationSignals::haveArrived()) << round;
    }
    EXPECT_FALSE(TerminationSignals::haveArrived()) << "nothing receives them";
}

TEST_F(TerminationSignalsTest, KeepsTheFirstSignalWhenSeveralArrive)
{
    const TerminationSignals signals;
    ::kill(::getpid(), SIGTERM);
    ASSERT_TRUE(eventually([&] { return signals.received() != 0; }));
    ::kill(::getpid(), SIGINT);
    ASSERT_TRUE(isReceived(SIGINT));
    EXPECT_EQ(signals.received(), SIGTERM);
    EXPECT_TRUE(signals.stopToken().stop_requested());
}

TEST_F(TerminationSignalsTest, ReportsNothingWithoutATerminationSignal)
{
    const TerminationSignals signals;
    ::kill(::getpid(), SIGUSR2);
    ASSERT_TRUE(isReceived(SIGUSR2));
    EXPECT_EQ(signals.received(), 0);
    EXPECT_FALSE(signals.stopToken().stop_requested());
}

TEST_F(TerminationSignalsTest, KeepsASignalIgnoredThatTheParentIgnored)
{
    ::signal(SIGHUP, SIG_IGN);
    const TerminationSignals signals;
    ::kill(::getpid(), SIGHUP);
    ::kill(::getpid(), SIGTERM);
    ASSERT_TRUE(eventually([&] { return signals.received() != 0; }));
    EXPECT_EQ(signals.received(), SIGTERM);
    EXPECT_EQ(dispositionOf(SIGHUP), SIG_IGN);
}

TEST_F(TerminationSignalsTest, AreNotBlockedInAProgramThatALibraryStartsWhileTheyAreUnblocked)
{
    const std::string before = blockedInANewProgram();
    const TerminationSignals signals;
    const std::string blocked = blockedInANewProgram();
    EXPECT_NE(blocked, before);
    {
        const UnblockedSignals unblocked;
        EXPECT_EQ(blockedInANewProgram(), before);
    }
    EXPECT_EQ(blockedInANewProgram(), blocked);
}

TEST_F(TerminationSignalsTest, ExitsWhenTheMainThreadIsBlockedLongerThanThePatience)
{
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const TerminationSignals signals(std::chrono::milliseconds(100));
        ::kill(::getpid(), SIGTERM);
        ::kill(::getpid(), SIGINT);
        ::pause(); // until a signal is delivered to this thread, which blocks them all
        ::_exit(0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_TRUE(WEXITSTATUS(status) == 128 + SIGTERM || WEXITSTATUS(status) == 128 + SIGINT);
}

TEST_F(TerminationSignalsTest, IgnoresSigpipeAndRestoresSigchld)
{
    ::signal(SIGCHLD, SIG_IGN);
    const TerminationSignals signals;
    EXPECT_EQ(dispositionOf(SIGPIPE), SIG_IGN);
    EXPECT_EQ(dispositionOf(SIGCHLD), SIG_DFL);
}

} // namespace stackreel
