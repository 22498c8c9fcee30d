#include "system/Folder.h"

#include "system/SystemError.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <optional>
#include <string>

namespace stackreel
{

namespace
{

namespace fs = std::filesystem;

class FolderTest : public testing::Test
{
protected:
    FolderTest()
    {
        fs::create_directory(m_directory / "folder");
        m_folder = std::make_unique<Folder>(m_directory / "folder");
    }
    void write(const std::string& name, const std::string& content) const
    {
        m_directory.write(fs::path("folder") / name, content);
    }
    int create(const std::string& name, fs::perms permissions)
    {
        return m_folder->createNew(name, permissions, m_file);
    }
    /// The errno value of a rename; 0 when it succeeds.
    int rename(const std::string& from, const std::string& to, bool replace) const
    {
        try {
            m_folder->rename(from, to, replace);
            return 0;
        } catch (const SystemError& error) {
            return error.code().value();
        }
    }

    TemporaryDirectory m_directory;
    std::unique_ptr<Folder> m_folder;
    std::optional<WriteHandle> m_file;
};

TEST_F(FolderTest, CreatesAFileOnlyUnderAFreeName)
{
    EXPECT_EQ(create("new", fs::perms::owner_read), 0);
    EXPECT_EQ(fs::status(m_directory / "folder/new").permissions(), fs::perms::owner_read);
    EXPECT_EQ(create("new", fs::perms::owner_all), EEXIST);
    fs::create_symlink("nowhere", m_directory / "folder/link");
    EXPECT_EQ(create("link", fs::perms::owner_all), EEXIST);
    EXPECT_EQ(create(std::string(300, 'x'), fs::perms::owner_all), ENAMETOOLONG);
}

TEST_F(FolderTest, RenamesAndReplacesOnlyWithReplace)
{
    write("from", "new");
    write("to", "old");
    EXPECT_EQ(rename("from", "to", false), EEXIST);
    EXPECT_EQ(contentOf(m_directory / "folder/to"), "old");
    EXPECT_EQ(rename("from", "to", true), 0);
    EXPECT_EQ(contentOf(m_directory / "folder/to"), "new");
    EXPECT_EQ(rename("to", "other", false), 0);
    EXPECT_EQ(rename("missing", "other", true), ENOENT);
    EXPECT_EQ(contentOf(m_directory / "folder/other"), "new");
}

TEST_F(FolderTest, MayReplaceAFileButNoFolder)
{
    write("file", "old");
    fs::create_directory(m_directory / "folder/empty");
    EXPECT_EQ(m_folder->errorOnReplacing("file"), 0);
    EXPECT_EQ(m_folder->errorOnReplacing("none"), 0);
    EXPECT_EQ(m_folder->errorOnReplacing("empty"), EISDIR);
    EXPECT_EQ(contentOf(m_directory / "folder/file"), "old");
    EXPECT_TRUE(fs::exists(m_directory / "folder/empty"));
}

TEST_F(FolderTest, ReachesItsFilesAfterItWasRenamed)
{
    ASSERT_EQ(create("a", fs::perms::owner_all), 0);
    const FileIdentity file = m_file->identity();
    EXPECT_TRUE(m_folder->isInPlace());
    fs::rename(m_directory / "folder", m_directory / "renamed");
    EXPECT_FALSE(m_folder->isInPlace());
    fs::create_directory(m_directory / "folder");
    EXPECT_FALSE(m_folder->isInPlace()) << "another folder";
    EXPECT_TRUE(m_folder->contains("a", file));
    m_folder->remove("a", file);
    EXPECT_FALSE(m_folder->contains("a", file));
    EXPECT_TRUE(fs::is_empty(m_directory / "renamed"));
}

TEST_F(FolderTest, RemovesOnlyTheFileItselfNotAnotherOfItsName)
{
    ASSERT_EQ(create("a", fs::perms::owner_all), 0);
    const FileIdentity file = m_file->identity();
    fs::rename(m_directory / "folder/a", m_directory / "folder/b");
    m_folder->remove("a", file);
    write("a", "another");
    m_folder->remove("a", file);
    EXPECT_EQ(contentOf(m_directory / "folder/a"), "another");
    fs::remove(m_directory / "folder/a");
    fs::create_symlink("b", m_directory / "folder/a");
    EXPECT_FALSE(m_folder->contains("a", file)) << "a link to it";
    m_folder->remove("b", file);
    EXPECT_FALSE(fs::exists(m_directory / "folder/b"));
}

TEST_F(FolderTest, ThrowsForWhatIsNoFolder)
{
    const auto errorOf = [](const fs::path& path) {
        try {
            const Folder folder(path);
            return 0;
        } catch (const SystemError& error) {
            return error.code().value();
        }
    };
    EXPECT_EQ(errorOf(m_directory / "missing"), ENOENT);
    EXPECT_EQ(errorOf(m_directory.write("file", "")), ENOTDIR);
}

} // namespace

} // namespace stackreel
