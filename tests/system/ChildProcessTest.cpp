#include "system/ChildProcess.h"

#include "system/Files.h"
#include "system/SystemError.h"
#include "tests/support/Awaited.h"
#include "tests/support/ChildReport.h"
#include "tests/support/Descriptors.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/ScopedSystemCalls.h"
#include "tests/support/ScopedWorkingDirectory.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <mutex>
#include <optional>
#include <thread>

namespace stackreel
{

namespace
{

/// Runs children and captures their outputs in files.
class ChildProcessTest : public testing::Test
{
protected:
    std::shared_ptr<ChildProcess> launch(const std::filesystem::path& executable,
                                         const std::vector<std::string>& arguments)
    {
        const WriteHandle output(m_directory.write("stdout", ""));
        const WriteHandle error(m_directory.write("stderr", ""));
        return ChildProcess::launch({.executable = executable,
                                     .arguments = arguments,
                                     .standardOutput = output.descriptor(),
                                     .standardError = error.descriptor()});
    }
    /// Runs the test child to its end and returns its status.
    int run(const std::vector<std::string>& arguments)
    {
        return launch(testChild(), arguments)->waitForExit();
    }
    /// Runs the test child and returns its standard output.
    std::string outputOf(const std::vector<std::string>& arguments)
    {
        EXPECT_EQ(run(arguments), 0);
        return output();
    }
    int launchError(const std::filesystem::path& executable)
    {
        try {
            launch(executable, {})->waitForExit();
        } catch (const SystemError& error) {
            EXPECT_FALSE(hasChildren());
            return error.code().value();
        }
        return 0;
    }
    std::string output() const { return contentOf(m_directory / "stdout"); }

    TemporaryDirectory m_directory;
};

/// A descriptor without close-on-exec.
class InheritableDescriptor
{
public:
    explicit InheritableDescriptor(const std::filesystem::path& file)
        : m_descriptor(::open(file.c_str(), O_RDONLY))
    {
    }
    ~InheritableDescriptor() { ::close(m_descriptor); }
    InheritableDescriptor(const InheritableDescriptor&) = delete;
    InheritableDescriptor& operator=(const InheritableDescriptor&) = delete;

    int number() const { return m_descriptor; }

private:
    int m_descriptor;
};

/// Redirects a descriptor to another file; the destructor restores it.
class ReplacedDescriptor
{
public:
    ReplacedDescriptor(int descriptor, const std::filesystem::path& file)
        : m_descriptor(descriptor), m_before(::fcntl(descriptor, F_DUPFD_CLOEXEC, 3))
    {
        const InheritableDescriptor opened(file);
        ::dup2(opened.number(), descriptor);
    }
    ~ReplacedDescriptor()
    {
        ::dup2(m_before, m_descriptor);
        ::close(m_before);
    }
    ReplacedDescriptor(const ReplacedDescriptor&) = delete;
    ReplacedDescriptor& operator=(const ReplacedDescriptor&) = delete;

private:
    int m_descriptor;
    int m_before;
};

/// The signals that a child ignores according to its report, as a bit mask. Signals 32 and 33 are not
/// included, because the C library uses them and may ignore them when a program starts.
unsigned long long ignoredSignals(const std::map<std::string, std::string>& report)
{
    return std::stoull(report.at("SigIgn"), nullptr, 16) & ~0x180000000ULL;
}

} // namespace

TEST_F(ChildProcessTest, ReturnsTheExitStatus)
{
    for (const int status : {0, 1, 7, 255})
        EXPECT_EQ(run({"exit", std::to_string(status)}), status);
    EXPECT_FALSE(hasChildren());
}

TEST_F(ChildProcessTest, ReturnsTheSignalNumberWhenASignalEndsTheChild)
{
    for (const int signal : {SIGKILL, SIGSEGV, SIGTERM, SIGPIPE, SIGABRT})
        EXPECT_EQ(run({"die", std::to_string(signal)}), signal);
}

TEST_F(ChildProcessTest, CapturesBothOutputsSeparately)
{
    EXPECT_EQ(run({"exit", "3"}), 3);
    EXPECT_EQ(output(), "out of 3\n");
    EXPECT_EQ(contentOf(m_directory / "stderr"), "error of 3\n");
}

TEST_F(ChildProcessTest, PassesArgumentsByteForByte)
{
    const std::vector<std::string> special = {"two words",
                                              "",
                                              "\"quoted\" 'twice'",
                                              "line\nfeed\ttab",
                                              "-dash",
                                              "$HOME `id` *",
                                              "100% \\ back",
                                              "naïve 東京",
                                              "\xff\xfe\x80 no UTF-8",
                                              ""};
    std::vector<std::string> arguments = {"arguments"};
    arguments.insert(arguments.end(), special.begin(), special.end());
    EXPECT_EQ(pieces(outputOf(arguments), '\0'), special);
}

TEST_F(ChildProcessTest, LeaksNoDescriptorIntoAChild)
{
    const auto file = m_directory.write("secret", "");
    const InheritableDescriptor low(file);
    const InheritableDescriptor other(file);
    const int high = ::fcntl(low.number(), F_DUPFD, 900);
    ASSERT_EQ(::fcntl(low.number(), F_GETFD), 0) << "not inheritable: the test would prove nothing";
    EXPECT_EQ(outputOf({"descriptors"}), "0\n1\n2\n");
    ::close(high);
}

TEST_F(ChildProcessTest, StartsWithDefaultSignalDispositionsAndAnEmptyMask)
{
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before);
    const auto pipeBefore = ::signal(SIGPIPE, SIG_IGN);
    const auto report = keysAndValues(outputOf({"signals"}));
    ::signal(SIGPIPE, pipeBefore);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);

    ASSERT_TRUE(report.contains("SigBlk"));
    EXPECT_EQ(report.at("SigBlk"), std::string(16, '0'));
    EXPECT_EQ(report.at("SigCgt"), std::string(16, '0'));
    EXPECT_EQ(ignoredSignals(report), 0U) << report.at("SigIgn");
}

TEST_F(ChildProcessTest, IgnoresARequestToEndThatThisProcessIgnores)
{
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) {
        const auto before = ::signal(signal, SIG_IGN);
        const auto report = keysAndValues(outputOf({"signals"}));
        ::signal(signal, before);
        EXPECT_EQ(ignoredSignals(report), 1ULL << (signal - 1)) << signal;
    }
}

TEST_F(ChildProcessTest, InheritsEnvironmentAndWorkingDirectory)
{
    const ScopedEnvironment variable("STACKREEL_TEST", "ein Wert, 値");
    const ScopedWorkingDirectory working(m_directory.path());
    const auto report = pieces(outputOf({"surroundings", "STACKREEL_TEST"}), '\0');
    EXPECT_EQ(report, (std::vector<std::string>{m_directory.path(), "ein Wert, 値"}));
}

TEST_F(ChildProcessTest, InheritsStandardInput)
{
    const ReplacedDescriptor input(STDIN_FILENO, m_directory.write("input", "from standard input"));
    EXPECT_EQ(outputOf({"echo"}), "from standard input");
}

TEST_F(ChildProcessTest, ThrowsAtOnceWhenTheProgramCannotBeLaunched)
{
    const auto directory = [this](const char* name) { return m_directory / name; };
    m_directory.write("not executable", "#!/bin/sh\nexit 0\n");
    m_directory.writeExecutable("no interpreter", "#!/no/such/interpreter\n");
    m_directory.writeExecutable("no program", "neither a program nor a script\n");
    m_directory.writeExecutable("empty", "");
    EXPECT_EQ(launchError(directory("missing")), ENOENT);
    EXPECT_EQ(launchError(m_directory.path()), EACCES);
    EXPECT_EQ(launchError(directory("not executable")), EACCES);
    EXPECT_EQ(launchError(directory("no interpreter")), ENOENT);
    EXPECT_EQ(launchError(directory("no program")), ENOEXEC);
    EXPECT_EQ(launchError(directory("empty")), ENOEXEC);
    EXPECT_EQ(launchError("sh"), ENOENT) << "PATH was searched";
}

TEST_F(ChildProcessTest, NamesTheProgramThatCannotBeStarted)
{
    try {
        launch("/no such/tool", {});
        FAIL() << "no error";
    } catch (const SystemError& error) {
        EXPECT_STREQ(error.what(), "Could not start “/no such/tool”: No such file or directory.");
    }
}

TEST_F(ChildProcessTest, ThrowsWhenTheSystemCannotStartAnotherProcess)
{
    ScopedSystemCalls calls;
    calls->posixSpawn = [](pid_t*, const char*, const posix_spawn_file_actions_t*, const posix_spawnattr_t*,
                           char* const*, char* const*) { return EAGAIN; };
    EXPECT_EQ(launchError(testChild()), EAGAIN);
}

TEST_F(ChildProcessTest, ThrowsWhenAnOutputDescriptorIsInvalid)
{
    const auto launchInto = [](int descriptor) {
        ChildProcess::launch({.executable = testChild(),
                              .arguments = {"exit", "0"},
                              .standardOutput = descriptor,
                              .standardError = descriptor});
    };
    EXPECT_THROW(launchInto(-1), SystemError);
    EXPECT_THROW(launchInto(1 << 30), SystemError);
    EXPECT_FALSE(hasChildren());
}

TEST_F(ChildProcessTest, ReapsAnEndedChildWhenTheLastReferenceIsReleased)
{
    auto child = launch(testChild(), {"exit", "5"});
    EXPECT_EQ(child->waitForExit(), 5);
    EXPECT_TRUE(hasChildren());
    child->terminate();
    EXPECT_EQ(child->waitForExit(), 5) << "waiting again returns the same";
    child.reset();
    EXPECT_FALSE(hasChildren());
}

TEST_F(ChildProcessTest, SendsSigtermWhenTerminated)
{
    const auto child = launch(testChild(), {"patient", m_directory / "pid", "1"});
    ASSERT_TRUE(eventually([&] { return std::filesystem::exists(m_directory / "pid"); }));
    child->terminate();
    EXPECT_EQ(child->waitForExit(), SIGTERM);
    EXPECT_EQ(contentOf(m_directory / "pid.requests"), "1");
}

TEST_F(ChildProcessTest, ContinuesToWaitWhenTheWaitIsInterrupted)
{
    ScopedSystemCalls calls;
    static int waits;
    waits = 0;
    calls->waitid = [](idtype_t type, id_t id, siginfo_t* info, int options) {
        errno = EINTR;
        return ++waits % 3 != 0 ? -1 : ::waitid(type, id, info, options);
    };
    EXPECT_EQ(run({"exit", "4"}), 4);
    EXPECT_EQ(waits, 9);
    EXPECT_FALSE(hasChildren());
}

TEST_F(ChildProcessTest, ThrowsWhenTheChildWasReapedElsewhere)
{
    const auto child = launch(testChild(), {"exit", "0"});
    siginfo_t info{};
    ASSERT_EQ(::waitid(P_ALL, 0, &info, WEXITED), 0);
    try {
        child->waitForExit();
        FAIL() << "no error";
    } catch (const SystemError& error) {
        EXPECT_EQ(error.code().value(), ECHILD);
    }
}

namespace
{

/// Records whether the child is reaped, and how many signals were sent after that.
struct SignalLog {
    std::mutex lock;
    bool reaped = false;
    int signalsAfterReaping = 0;
};

SignalLog signalLog;

} // namespace

TEST_F(ChildProcessTest, IsNeverSignalledOnceItsProcessIdMayBeReused)
{
    ScopedSystemCalls calls;
    calls->waitid = [](idtype_t type, id_t id, siginfo_t* info, int options) {
        if ((options & WNOWAIT) == 0) {
            const std::lock_guard guard(signalLog.lock);
            signalLog.reaped = true;
        }
        return ::waitid(type, id, info, options);
    };
    calls->kill = [](pid_t pid, int signal) {
        const std::lock_guard guard(signalLog.lock);
        signalLog.signalsAfterReaping += signalLog.reaped ? 1 : 0;
        return ::kill(pid, signal);
    };
    for (int round = 0; round < 50; ++round) {
        signalLog.reaped = false;
        auto child = launch(testChild(), {"exit", "0"});
        std::thread other([held = child]() mutable {
            for (int times = 0; times < 20; ++times)
                held->terminate();
            held.reset();
        });
        child->waitForExit();
        child.reset();
        other.join();
        EXPECT_TRUE(signalLog.reaped);
    }
    EXPECT_EQ(signalLog.signalsAfterReaping, 0);
    EXPECT_FALSE(hasChildren());
}

} // namespace stackreel
