#include "model/Destination.h"

#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <string>
#include <vector>

namespace stackreel
{

namespace
{

namespace fs = std::filesystem;

class DestinationTest : public testing::Test
{
protected:
    /// The error when a destination in the folder is checked; empty if it is accepted.
    std::string errorFor(const fs::path& name, bool overwrite) const
    {
        try {
            Destination::check(m_source, m_directory / name, overwrite);
        } catch (const std::exception& error) {
            return error.what();
        }
        return "";
    }
    std::string quoted(const fs::path& name) const { return "“" + (m_directory / name).string() + "”"; }

    TemporaryDirectory m_directory;
    fs::path m_source = m_directory.write("clip.mov", "source");
};

TEST_F(DestinationTest, AcceptsANewFile)
{
    const auto destination = Destination::check(m_source, m_directory / "new.mp4", false);
    EXPECT_EQ(destination.named, m_directory / "new.mp4");
    EXPECT_EQ(destination.file, m_directory / "new.mp4");
    EXPECT_FALSE(destination.replace);
}

TEST_F(DestinationTest, AcceptsAnExistingFileOnlyWithOverwrite)
{
    m_directory.write("old.mp4", "old");
    EXPECT_EQ(errorFor("old.mp4", false),
              quoted("old.mp4") + " already exists. Replace it with --overwrite.");
    EXPECT_TRUE(Destination::check(m_source, m_directory / "old.mp4", true).replace);
}

TEST_F(DestinationTest, RefusesTheSourceUnderAnyName)
{
    fs::create_hard_link(m_source, m_directory / "hard.mp4");
    fs::create_symlink("clip.mov", m_directory / "soft.mp4");
    fs::create_symlink("soft.mp4", m_directory / "softer.mp4");
    fs::create_directory(m_directory / "folder");
    for (const char* name :
         {"clip.mov", "hard.mp4", "soft.mp4", "softer.mp4", "folder/../clip.mov", "./clip.mov"})
        for (const bool overwrite : {false, true})
            EXPECT_EQ(errorFor(name, overwrite),
                      quoted(name) + " is the source itself, which is never overwritten.");
}

TEST_F(DestinationTest, RefusesAFolderAndAPipe)
{
    fs::create_directory(m_directory / "folder.mp4");
    fs::create_symlink("folder.mp4", m_directory / "link.mp4");
    ASSERT_EQ(::mkfifo((m_directory / "fifo.mp4").c_str(), 0600), 0);
    for (const bool overwrite : {false, true}) {
        EXPECT_EQ(errorFor("folder.mp4", overwrite),
                  quoted("folder.mp4") + " is a folder. Name the file to write.");
        EXPECT_EQ(errorFor("link.mp4", overwrite),
                  quoted("link.mp4") + " is a folder. Name the file to write.");
        EXPECT_EQ(errorFor("fifo.mp4", overwrite), quoted("fifo.mp4") + " is not a regular file.");
    }
}

TEST_F(DestinationTest, NamesAMissingFolder)
{
    EXPECT_EQ(errorFor("none/out.mp4", false), "The folder " + quoted("none") + " does not exist.");
}

TEST_F(DestinationTest, NamesAParentThatIsNoFolder)
{
    EXPECT_EQ(errorFor("clip.mov/out.mp4", false), quoted("clip.mov") + " is not a folder.");
}

TEST_F(DestinationTest, FollowsALinkToTheFileToWrite)
{
    m_directory.write("folder/old.mp4", "old");
    fs::create_symlink("folder/old.mp4", m_directory / "link.mp4");
    fs::create_symlink(m_directory / "folder/new.mp4", m_directory / "dangling.mp4");
    EXPECT_EQ(errorFor("link.mp4", false),
              quoted("link.mp4") + " already exists. Replace it with --overwrite.");
    EXPECT_EQ(errorFor("dangling.mp4", false),
              quoted("dangling.mp4") + " already exists. Replace it with --overwrite.");
    EXPECT_EQ(Destination::check(m_source, m_directory / "link.mp4", true).file,
              m_directory / "folder/old.mp4");
    EXPECT_EQ(Destination::check(m_source, m_directory / "dangling.mp4", true).file,
              m_directory / "folder/new.mp4");
}

TEST_F(DestinationTest, RefusesACycleOfLinks)
{
    fs::create_symlink("b.mp4", m_directory / "a.mp4");
    fs::create_symlink("a.mp4", m_directory / "b.mp4");
    EXPECT_NE(errorFor("a.mp4", true), "");
    EXPECT_NE(errorFor("a.mp4", false), "");
}

TEST_F(DestinationTest, RefusesANameThatIsTooLong)
{
    EXPECT_NE(errorFor(std::string(300, 'x') + ".mp4", false), "");
}

} // namespace

} // namespace stackreel
