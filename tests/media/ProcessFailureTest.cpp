#include "media/ProcessRunner.h"
#include "system/SystemError.h"
#include "tests/media/RunnerTest.h"
#include "tests/support/ChildReport.h"
#include "tests/support/Descriptors.h"
#include "tests/support/ScopedSystemCalls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <map>

namespace stackreel
{

namespace
{

using ProcessFailureTest = RunnerTest;

template <typename Result>
Result failWith(int errorNumber)
{
    errno = errorNumber;
    return -1;
}

/// How many more times a replaced call succeeds before it fails.
int successesBeforeFailure;

int failOpening(int folder, const char* path, int flags, mode_t mode)
{
    return successesBeforeFailure-- > 0 ? ::openat(folder, path, flags, mode) : failWith<int>(EMFILE);
}

int failFlushing(int descriptor)
{
    return successesBeforeFailure-- > 0 ? ::fsync(descriptor) : failWith<int>(ENOSPC);
}

ssize_t failReading(int descriptor, void* buffer, size_t size)
{
    return successesBeforeFailure-- > 0 ? ::read(descriptor, buffer, size) : failWith<ssize_t>(EIO);
}

/// The errno value of the error with which a run ends; 0 when it succeeds.
int errorOf(QCoro::Task<ProcessOutput> task)
{
    try {
        runToEnd(std::move(task));
    } catch (const SystemError& error) {
        return error.code().value();
    }
    return 0;
}

} // namespace

TEST_F(ProcessFailureTest, IsReportedAtOnceWhenTheProgramCannotBeLaunched)
{
    m_directory.write("not executable", "#!/bin/sh\nexit 0\n");
    m_directory.writeExecutable("no interpreter", "#!/no/such/interpreter\n");
    m_directory.writeExecutable("text", "echo no interpreter line\n");
    const auto errorOfProgram = [](const std::filesystem::path& program) {
        return errorOf(ProcessRunner::run(program, {"argument"}));
    };
    EXPECT_EQ(errorOfProgram(m_directory / "missing"), ENOENT);
    EXPECT_EQ(errorOfProgram(m_directory.path()), EACCES);
    EXPECT_EQ(errorOfProgram(m_directory / "not executable"), EACCES);
    EXPECT_EQ(errorOfProgram(m_directory / "no interpreter"), ENOENT);
    EXPECT_EQ(errorOfProgram(m_directory / "text"), ENOEXEC);
}

TEST_F(ProcessFailureTest, NamesTheProgramThatCannotBeStarted)
{
    try {
        runToEnd(ProcessRunner::run("/no such/tool", {}));
        FAIL() << "no error";
    } catch (const SystemError& error) {
        EXPECT_STREQ(error.what(), "Could not start “/no such/tool”: No such file or directory.");
    }
}

TEST_F(ProcessFailureTest, IsReportedWhenTheScratchFolderCannotBeCreated)
{
    ScopedSystemCalls calls;
    calls->mkdir = [](const char*, mode_t) { return failWith<int>(EACCES); };
    EXPECT_EQ(errorOf(run({"touch", marker()})), EACCES);
    calls->mkdir = [](const char*, mode_t) { return failWith<int>(ENOSPC); };
    EXPECT_EQ(errorOf(run({"touch", marker()})), ENOSPC);
    EXPECT_FALSE(isMarked());
}

TEST_F(ProcessFailureTest, IsReportedWhenTheTemporaryFolderIsAFile)
{
    const ScopedEnvironment temporary("TMPDIR", m_directory.write("file", ""));
    EXPECT_EQ(errorOf(run({"touch", marker()})), EEXIST);
    EXPECT_FALSE(isMarked());
}

TEST_F(ProcessFailureTest, IsReportedWhenACaptureFileCannotBeOpened)
{
    // Both files are created, then both are opened. An error when a file is created is ignored.
    const std::map<int, int> errors = {{0, EMFILE}, {1, EMFILE}, {2, EMFILE}, {3, EMFILE}};
    for (const auto& [opened, expected] : errors) {
        ScopedSystemCalls calls;
        successesBeforeFailure = opened;
        calls->openat = failOpening;
        EXPECT_EQ(errorOf(run({"touch", marker()})), expected) << opened;
        EXPECT_EQ(scratchNames().size(), 0U) << opened;
    }
    EXPECT_FALSE(isMarked());
}

TEST_F(ProcessFailureTest, IsReportedOnOpeningWhenACaptureFileCannotBeCreated)
{
    ScopedSystemCalls calls;
    calls->openat = [](int folder, const char* path, int flags, mode_t mode) {
        return (flags & O_CREAT) != 0 ? failWith<int>(ENOSPC) : ::openat(folder, path, flags, mode);
    };
    EXPECT_EQ(errorOf(run({"touch", marker()})), ENOENT);
    EXPECT_FALSE(isMarked());
}

TEST_F(ProcessFailureTest, IsReportedWhenNoFurtherProcessCanStart)
{
    ScopedSystemCalls calls;
    calls->posixSpawn = [](pid_t*, const char*, const posix_spawn_file_actions_t*, const posix_spawnattr_t*,
                           char* const*, char* const*) { return EAGAIN; };
    EXPECT_EQ(errorOf(run({"touch", marker()})), EAGAIN);
    EXPECT_FALSE(isMarked());
}

TEST_F(ProcessFailureTest, IsReportedWhenWaitingFailsAndTheChildIsReaped)
{
    ScopedSystemCalls calls;
    calls->waitid = [](idtype_t type, id_t id, siginfo_t* info, int options) {
        return (options & WNOWAIT) != 0 ? failWith<int>(EINVAL) : ::waitid(type, id, info, options);
    };
    EXPECT_EQ(errorOf(run({"touch", marker()})), EINVAL);
    EXPECT_TRUE(isMarked());
}

TEST_F(ProcessFailureTest, IsReportedWhenFlushingAnOutputFails)
{
    for (const int flushed : {0, 1}) {
        ScopedSystemCalls calls;
        successesBeforeFailure = flushed;
        calls->fsync = failFlushing;
        EXPECT_EQ(errorOf(run({"exit", "0"})), ENOSPC) << flushed;
        EXPECT_EQ(scratchNames().size(), 0U) << flushed;
    }
}

TEST_F(ProcessFailureTest, IsReportedWhenReadingAnOutputFails)
{
    // Each output takes one read for its content and one that returns 0 at its end.
    for (const int reads : {0, 1, 2, 3}) {
        ScopedSystemCalls calls;
        successesBeforeFailure = reads;
        calls->read = failReading;
        EXPECT_EQ(errorOf(run({"exit", "0"})), EIO) << reads;
        EXPECT_EQ(scratchNames().size(), 0U) << reads;
    }
}

TEST_F(ProcessFailureTest, LeavesNothingBehindWhenDescriptorsRunOut)
{
    int failed = 0;
    int finished = 0;
    {
        const auto highest = *openDescriptors().rbegin();
        const ScopedDescriptorLimit limit(static_cast<rlim_t>(highest) + 6);
        std::vector<Awaited<ProcessOutput>> running;
        for (int child = 0; child < 40; ++child)
            running.emplace_back(run({"exit", "0"}));
        for (auto& run : running) {
            try {
                const ProcessOutput output = run.result();
                EXPECT_EQ(output.status, 0) << output.standardError;
                ++finished;
            } catch (const SystemError& error) {
                // EMFILE; or ENOENT if no descriptor was free when the file was to be created, but one was
                // when it was opened.
                EXPECT_TRUE(error.code().value() == EMFILE || error.code().value() == ENOENT) << error.what();
                ++failed;
            }
        }
    }
    EXPECT_EQ(finished + failed, 40);
}

} // namespace stackreel
