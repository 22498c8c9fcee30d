#include "system/PrivateFolder.h"

#include "system/SystemError.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace stackreel
{

namespace
{

namespace fs = std::filesystem;

class PrivateFolderTest : public testing::Test
{
protected:
    /// The error of opening the folder; 0 without one.
    int openError() const
    {
        try {
            const PrivateFolder folder(path);
            return 0;
        } catch (const SystemError& error) {
            return error.code().value();
        }
    }

    const TemporaryDirectory m_directory;
    const fs::path path = m_directory / "mine";
};

} // namespace

TEST_F(PrivateFolderTest, IsForItsUserOnlyWhetherNewOrNot)
{
    const mode_t before = ::umask(0);
    EXPECT_EQ(openError(), 0);
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_all);
    fs::permissions(path, fs::perms(0777));
    EXPECT_EQ(openError(), 0);
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_all);
    ::umask(before);
}

TEST_F(PrivateFolderTest, IsNotALinkThatSomebodyPlanted)
{
    fs::create_directory(m_directory / "elsewhere");
    fs::permissions(m_directory / "elsewhere", fs::perms(0755));
    fs::create_directory_symlink(m_directory / "elsewhere", path);
    EXPECT_NE(openError(), 0);
    EXPECT_EQ(fs::status(m_directory / "elsewhere").permissions(), fs::perms(0755));
}

TEST_F(PrivateFolderTest, IsNotAFile)
{
    m_directory.write("mine", "a file in the way");
    EXPECT_EQ(openError(), ENOTDIR);
}

TEST_F(PrivateFolderTest, IsNotAFolderOfAnotherUser)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can give a folder to another user";
    fs::create_directory(path);
    fs::permissions(path, fs::perms(0777));
    ASSERT_EQ(::chown(path.c_str(), 54321, 54321), 0);
    EXPECT_EQ(openError(), EPERM);
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0777));
}

TEST_F(PrivateFolderTest, IsNamedAfterItsUser)
{
    const ScopedEnvironment temporary("TMPDIR", m_directory.path().string());
    EXPECT_EQ(PrivateFolder::pathOfUser("name"), m_directory / ("name-" + std::to_string(::geteuid())));
}

TEST_F(PrivateFolderTest, IsLockedExclusivelyOnlyWhileNobodyElseHasItOpen)
{
    const PrivateFolder folder(path);
    {
        const PrivateFolder other(path);
        EXPECT_FALSE(folder.lockExclusively());
        EXPECT_FALSE(other.lockExclusively()) << "the failed change gave up the shared lock";
    }
    EXPECT_TRUE(folder.lockExclusively());
}

} // namespace stackreel
