#include "system/Files.h"

#include "system/SystemError.h"
#include "tests/support/Descriptors.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/ScopedSystemCalls.h"
#include "tests/support/ScopedWorkingDirectory.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <string.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <functional>

namespace stackreel
{

namespace
{

/// The errno value of the `SystemError` that the action throws; 0 if it throws nothing.
int errorOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const SystemError& error) {
        return error.code().value();
    }
    return 0;
}

std::filesystem::perms permissionsOf(const std::filesystem::path& path)
{
    return std::filesystem::status(path).permissions();
}

/// Closes a standard descriptor; the destructor restores it.
class ClosedDescriptor
{
public:
    explicit ClosedDescriptor(int descriptor)
        : m_descriptor(descriptor), m_copy(::fcntl(descriptor, F_DUPFD_CLOEXEC, 100))
    {
        ::close(descriptor);
    }
    ~ClosedDescriptor()
    {
        ::dup2(m_copy, m_descriptor);
        ::close(m_copy);
    }
    ClosedDescriptor(const ClosedDescriptor&) = delete;
    ClosedDescriptor& operator=(const ClosedDescriptor&) = delete;

private:
    int m_descriptor;
    int m_copy;
};

} // namespace

TEST(TemporaryFolder, IsReadFromTheEnvironment)
{
    struct Row {
        std::optional<std::string> variable;
        std::filesystem::path expected;
    };
    const Row rows[] = {
        {std::nullopt, "/tmp"},
        {"", "/tmp"},
        {"/no such/folder", "/no such/folder"},
        {"/var/tmp", "/var/tmp"},
        {"scratch", std::filesystem::current_path() / "scratch"},
    };
    for (const Row& row : rows) {
        const ScopedEnvironment variable("TMPDIR", row.variable);
        EXPECT_EQ(Files::temporaryDirectory(), row.expected) << row.variable.value_or("(none)");
    }
}

TEST(CreatingFolders, CreatesTheMissingParents)
{
    const TemporaryDirectory directory;
    Files::createDirectories(directory / "a/b c/d");
    EXPECT_TRUE(std::filesystem::is_directory(directory / "a/b c/d"));
}

TEST(CreatingFolders, AcceptsAnExistingFolderOrALinkToOne)
{
    const TemporaryDirectory directory;
    std::filesystem::create_directory(directory / "there");
    std::filesystem::create_directory_symlink(directory / "there", directory / "link");
    Files::createDirectories(directory / "there");
    Files::createDirectories(directory / "there/");
    Files::createDirectories(directory / "link/inside");
    Files::createDirectories("/");
    EXPECT_TRUE(std::filesystem::is_directory(directory / "there/inside"));
}

TEST(CreatingFolders, AcceptsPathsRelativeToTheWorkingDirectory)
{
    const TemporaryDirectory directory;
    const ScopedWorkingDirectory working(directory.path());
    Files::createDirectories("single");
    Files::createDirectories("two/levels");
    Files::createPrivateDirectory("private");
    EXPECT_EQ(directory.names(), (std::vector<std::string>{"private", "single", "two"}));
    EXPECT_TRUE(std::filesystem::is_directory(directory / "two/levels"));
}

TEST(CreatingFolders, FailsWhenAFileIsInTheWay)
{
    const TemporaryDirectory directory;
    const auto file = directory.write("file", "");
    EXPECT_EQ(errorOf([&] { Files::createDirectories(file); }), EEXIST);
    EXPECT_EQ(errorOf([&] { Files::createDirectories(file / "below"); }), EEXIST);
}

TEST(CreatingFolders, ReportsTheReasonWhenTheSystemRefuses)
{
    const TemporaryDirectory directory;
    ScopedSystemCalls calls;
    calls->mkdir = [](const char*, mode_t) {
        errno = EACCES;
        return -1;
    };
    const auto folder = directory / "new";
    try {
        Files::createDirectories(folder);
        FAIL() << "no error";
    } catch (const SystemError& error) {
        EXPECT_EQ(error.what(), "Could not create the folder “" + folder.string() + "”: Permission denied.");
    }
    EXPECT_EQ(errorOf([&] { Files::createPrivateDirectory(folder); }), EACCES);
}

TEST(CreatingAPrivateFolder, AllowsAccessOnlyToItsOwner)
{
    const TemporaryDirectory directory;
    Files::createPrivateDirectory(directory / "parent/private");
    EXPECT_EQ(permissionsOf(directory / "parent/private"), std::filesystem::perms::owner_all);
}

TEST(CreatingAPrivateFolder, FailsWhenTheFolderExists)
{
    const TemporaryDirectory directory;
    EXPECT_EQ(errorOf([&] { Files::createPrivateDirectory(directory.path()); }), EEXIST);
}

TEST(CreatingAnEmptyFile, KeepsAnExistingFile)
{
    const TemporaryDirectory directory;
    EXPECT_EQ(Files::createEmpty(directory / "new"), 0);
    EXPECT_EQ(Files::createEmpty(directory.write("old", "content")), 0);
    EXPECT_EQ(contentOf(directory / "old"), "content");
    EXPECT_TRUE(std::filesystem::is_empty(directory / "new"));
}

TEST(CreatingAnEmptyFile, ReturnsTheReasonWhenItFails)
{
    const TemporaryDirectory directory;
    EXPECT_EQ(Files::createEmpty(directory / "missing/new"), ENOENT);
    EXPECT_EQ(Files::createEmpty(directory.path()), EISDIR);
    EXPECT_FALSE(std::filesystem::exists(directory / "missing"));
}

TEST(AWriteHandle, IsNotInheritedAndKeepsTheContent)
{
    const TemporaryDirectory directory;
    const auto file = directory.write("file", "content");
    const auto before = openDescriptors();
    {
        const WriteHandle handle(file);
        EXPECT_EQ(::fcntl(handle.descriptor(), F_GETFD), FD_CLOEXEC);
        EXPECT_EQ(::pwrite(handle.descriptor(), "C", 1, 0), 1);
        handle.synchronize();
    }
    EXPECT_EQ(contentOf(file), "Content");
    EXPECT_EQ(openDescriptors(), before);
}

TEST(AWriteHandle, IsNeverAStandardDescriptor)
{
    const TemporaryDirectory directory;
    const auto file = directory.write("file", "");
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        const ClosedDescriptor closed(standard);
        const WriteHandle handle(file);
        EXPECT_GT(handle.descriptor(), STDERR_FILENO);
        EXPECT_EQ(::fcntl(handle.descriptor(), F_GETFD), FD_CLOEXEC);
        EXPECT_FALSE(openDescriptors().contains(standard));
    }
}

TEST(AWriteHandle, ReportsTheReasonWhenAFileCannotBeOpened)
{
    const TemporaryDirectory directory;
    EXPECT_EQ(errorOf([&] { WriteHandle{directory / "missing"}; }), ENOENT);
    EXPECT_EQ(errorOf([&] { WriteHandle{directory.path()}; }), EISDIR);
    ScopedSystemCalls calls;
    calls->openat = [](int, const char*, int, mode_t) {
        errno = EMFILE;
        return -1;
    };
    EXPECT_EQ(errorOf([&] { WriteHandle{directory.write("file", "")}; }), EMFILE);
}

TEST(AWriteHandle, RetriesWhenOpeningIsInterrupted)
{
    const TemporaryDirectory directory;
    const auto file = directory.write("file", "");
    ScopedSystemCalls calls;
    static int attempts;
    attempts = 0;
    calls->openat = [](int folder, const char* path, int flags, mode_t mode) {
        errno = EINTR;
        return ++attempts < 3 ? -1 : ::openat(folder, path, flags, mode);
    };
    EXPECT_GT(WriteHandle(file).descriptor(), STDERR_FILENO);
    EXPECT_EQ(attempts, 3);
}

TEST(AWriteHandle, ReportsAFullDiskWhenFlushing)
{
    const TemporaryDirectory directory;
    const WriteHandle handle(directory.write("file", ""));
    ScopedSystemCalls calls;
    calls->fsync = [](int) {
        errno = ENOSPC;
        return -1;
    };
    EXPECT_EQ(errorOf([&] { handle.synchronize(); }), ENOSPC);
}

TEST(ReadingAFile, ReturnsEveryByte)
{
    const TemporaryDirectory directory;
    std::string bytes(300 * 1024, '\0');
    for (std::size_t index = 0; index < bytes.size(); ++index)
        bytes[index] = static_cast<char>(index * 7 + index / 256);
    EXPECT_EQ(Files::readAll(directory.write("bytes", bytes)), bytes);
    EXPECT_EQ(Files::readAll(directory.write("empty", "")), "");
}

TEST(ReadingAFile, JoinsShortAndInterruptedReads)
{
    const TemporaryDirectory directory;
    const auto file = directory.write("file", "one two three four");
    ScopedSystemCalls calls;
    static int reads;
    reads = 0;
    calls->read = [](int descriptor, void* buffer, size_t size) -> ssize_t {
        errno = EINTR;
        return ++reads % 2 == 1 ? -1 : ::read(descriptor, buffer, std::min<size_t>(size, 5));
    };
    EXPECT_EQ(Files::readAll(file), "one two three four");
    EXPECT_EQ(reads, 10);
}

TEST(ReadingAFile, ReportsAReadErrorAndClosesTheFile)
{
    const TemporaryDirectory directory;
    const auto file = directory.write("file", "content");
    const auto before = openDescriptors();
    EXPECT_EQ(errorOf([&] { Files::readAll(directory / "missing"); }), ENOENT);
    ScopedSystemCalls calls;
    calls->read = [](int, void*, size_t) -> ssize_t {
        errno = EIO;
        return -1;
    };
    EXPECT_EQ(errorOf([&] { Files::readAll(file); }), EIO);
    EXPECT_EQ(openDescriptors(), before);
}

TEST(AnExecutable, IsAFileThatMayBeExecuted)
{
    const TemporaryDirectory directory;
    const auto program = directory.writeExecutable("program", "");
    const auto document = directory.write("document", "");
    std::filesystem::create_symlink(program, directory / "link to program");
    std::filesystem::create_symlink(document, directory / "link to document");
    std::filesystem::create_symlink("nowhere", directory / "dangling link");
    std::filesystem::create_directory(directory / "folder");
    EXPECT_TRUE(Files::isExecutable(program));
    EXPECT_TRUE(Files::isExecutable(directory / "link to program"));
    for (const char* name :
         {"document", "link to document", "dangling link", "folder", "missing", "program/below"})
        EXPECT_FALSE(Files::isExecutable(directory / name)) << name;
    EXPECT_FALSE(Files::isExecutable(""));
}

} // namespace stackreel
