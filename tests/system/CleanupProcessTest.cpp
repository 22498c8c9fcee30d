#include "system/CleanupProcess.h"

#include "system/Files.h"
#include "tests/support/Awaited.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <functional>
#include <memory>

namespace stackreel
{

namespace
{

/// A child that outlives the test. With `inOtherSession` it has its own session, like a process of another
/// program.
pid_t startChild(bool inOtherSession = false)
{
    const pid_t child = ::fork();
    if (child == 0) {
        if (inOtherSession)
            ::setsid();
        ::execl("/bin/sleep", "sleep", "600", nullptr);
        ::_exit(EXIT_FAILURE);
    }
    return child;
}

/// The exit status of a process that can still open a pidfd.
constexpr int pidfdIsNotDenied = 77;

/// Makes the system refuse a pidfd to this process and its children, or ends the process.
void denyPidfd()
{
    sock_filter code[] = {BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
                          BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_pidfd_open, 0, 1),
                          BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
                          BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
    const sock_fprog program = {.len = 4, .filter = code};
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program);
    if (::syscall(SYS_pidfd_open, ::getpid(), 0) >= 0)
        ::_exit(pidfdIsNotDenied);
}

/// Tests with a program, a copy of this process, that has a clean-up process and then ends.
class CleanupProcessTest : public testing::Test
{
protected:
    /// Runs the program: it starts its clean-up process, calls `work` and then `end`, which must end it.
    static void run(const std::function<void()>& work, const std::function<void()>& end)
    {
        const pid_t program = ::fork();
        if (program == 0) {
            CleanupProcess::start();
            work();
            end();
        }
        ::waitpid(program, nullptr, 0);
    }
    TemporaryPath* addFile(const char* name) const
    {
        const std::filesystem::path path = m_folder / name;
        return new TemporaryPath(path, WriteHandle(path).identity());
    }
    bool isRemoved(const char* name) const
    {
        return eventually([&] { return !std::filesystem::exists(m_folder / name); });
    }

    TemporaryDirectory m_folder;
    const std::vector<std::function<void()>> m_ends = {[] { std::exit(0); }, [] { ::_exit(0); },
                                                       [] { std::abort(); }, [] { ::raise(SIGKILL); }};
};

} // namespace

TEST_F(CleanupProcessTest, RemovesTemporaryPathsHoweverTheProgramEnds)
{
    for (const auto& end : m_ends) {
        m_folder.write("scratch/output", "text");
        m_folder.write("half.mp4", "half");
        run(
            [this] {
                new TemporaryPath(m_folder / "scratch");
                new TemporaryPath(m_folder / "not there");
                addFile("half.mp4");
            },
            end);
        EXPECT_TRUE(isRemoved("scratch"));
        EXPECT_TRUE(isRemoved("half.mp4"));
    }
}

TEST_F(CleanupProcessTest, KeepsWhatIsNoLongerTemporaryAndWhatItDoesNotKnow)
{
    for (const char* name : {"other.mp4", "whole.mp4", "half.mp4"})
        m_folder.write(name, "text");
    run(
        [this] {
            delete addFile("whole.mp4");
            addFile("half.mp4");
        },
        [] { ::_exit(0); });
    ASSERT_TRUE(isRemoved("half.mp4"));
    EXPECT_EQ(m_folder.names(), (std::vector<std::string>{"other.mp4", "whole.mp4"}));
}

TEST_F(CleanupProcessTest, KeepsWhatTookTheNameOfATemporaryFile)
{
    for (const char* name : {"file", "folder", "link", "last"})
        m_folder.write(name, "ours");
    m_folder.write("theirs", "theirs");
    run(
        [this] {
            for (const char* name : {"file", "folder", "link", "last"})
                addFile(name);
            std::filesystem::rename(m_folder / "theirs", m_folder / "file");
            std::filesystem::remove(m_folder / "folder");
            std::filesystem::create_directory(m_folder / "folder");
            std::filesystem::rename(m_folder / "link", m_folder / "renamed");
            std::filesystem::create_symlink("renamed", m_folder / "link");
        },
        [] { ::_exit(0); });
    ASSERT_TRUE(isRemoved("last")) << "after the others";
    EXPECT_EQ(m_folder.names(), (std::vector<std::string>{"file", "folder", "link", "renamed"}));
}

TEST_F(CleanupProcessTest, KillsTheChildrenThatAreLeft)
{
    for (const auto& end : m_ends) {
        // The pipe is closed by the end of all who hold it.
        int ends[2];
        ASSERT_EQ(::pipe(ends), 0);
        run(
            [] {
                for (int count = 0; count < 3; ++count)
                    CleanupProcess::addChild(startChild());
            },
            end);
        ::close(ends[1]);
        char none = 0;
        EXPECT_EQ(::read(ends[0], &none, 1), 0);
        ::close(ends[0]);
    }
}

TEST_F(CleanupProcessTest, KillsTheChildrenWhereTheSystemHasNoPidfd)
{
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t outer = ::fork();
    if (outer == 0) {
        denyPidfd();
        run([] { CleanupProcess::addChild(startChild()); }, [] { ::_exit(0); });
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(outer, &status, 0);
    ::close(ends[1]);
    if (WIFEXITED(status) && WEXITSTATUS(status) == pidfdIsNotDenied) {
        ::close(ends[0]);
        GTEST_SKIP() << "a filter for system calls has no effect here";
    }
    pollfd end = {.fd = ends[0], .events = POLLIN, .revents = 0};
    EXPECT_EQ(::poll(&end, 1, 5000), 1);
    ::close(ends[0]);
}

TEST_F(CleanupProcessTest, KillsNoOtherProcessThatHasTheIdOfAChild)
{
    const pid_t other = startChild(true);
    m_folder.write("last", "");
    run(
        [this, other] {
            CleanupProcess::addChild(other);
            addFile("last");
        },
        [] { ::_exit(0); });
    ASSERT_TRUE(isRemoved("last")) << "children are killed before";
    EXPECT_EQ(::waitpid(other, nullptr, WNOHANG), 0) << "it runs";
    ::kill(other, SIGKILL);
    ::waitpid(other, nullptr, 0);
}

TEST_F(CleanupProcessTest, KillsNoChildThatWasRemoved)
{
    const pid_t child = startChild();
    m_folder.write("last", "");
    run(
        [this, child] {
            CleanupProcess::addChild(child);
            CleanupProcess::removeChild(child);
            addFile("last");
        },
        [] { ::_exit(0); });
    ASSERT_TRUE(isRemoved("last")) << "children are killed before";
    EXPECT_EQ(::waitpid(child, nullptr, WNOHANG), 0) << "it runs";
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
}

} // namespace stackreel
