#include "cli/Destination.h"

#include "cli/CliError.h"
#include "platform/SystemError.h"
#include "tests/support/ScopedSystemCalls.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
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

class PartialFileTest : public DestinationTest
{
protected:
    Destination destination(bool overwrite) const
    {
        return Destination::check(m_source, m_directory / "out.mp4", overwrite);
    }
    void render(const PartialFile& partial, const std::string& content) const
    {
        m_directory.write(partial.path().filename(), content);
    }
};

TEST_F(PartialFileTest, IsAHiddenNameBesideItsDestination)
{
    const PartialFile partial(destination(false));
    EXPECT_EQ(partial.path().parent_path(), m_directory.path());
    EXPECT_TRUE(partial.path().filename().string().starts_with(".stackreel-"));
    EXPECT_EQ(partial.path().extension(), ".mp4");
    EXPECT_EQ(m_directory.names(), std::vector<std::string>{"clip.mov"});
    EXPECT_NE(PartialFile(destination(false)).path(), partial.path());
}

TEST_F(PartialFileTest, IsRemovedWithTheObjectUnlessItWasMoved)
{
    {
        const PartialFile partial(destination(false));
        render(partial, "half");
    }
    EXPECT_EQ(m_directory.names(), std::vector<std::string>{"clip.mov"});
    {
        const PartialFile partial(destination(false));
        render(partial, "whole");
        partial.moveIntoPlace();
    }
    EXPECT_EQ(m_directory.names(), (std::vector<std::string>{"clip.mov", "out.mp4"}));
    EXPECT_EQ(contentOf(m_directory / "out.mp4"), "whole");
}

TEST_F(PartialFileTest, KeepsAFileThatAppearedAtTheDestination)
{
    const PartialFile partial(destination(false));
    render(partial, "new");
    m_directory.write("out.mp4", "somebody's");
    EXPECT_THROW(partial.moveIntoPlace(), CliError);
    EXPECT_EQ(contentOf(m_directory / "out.mp4"), "somebody's");
}

TEST_F(PartialFileTest, ReplacesAnExistingFileWithOverwrite)
{
    m_directory.write("out.mp4", "old");
    const PartialFile partial(destination(true));
    render(partial, "new");
    partial.moveIntoPlace();
    EXPECT_EQ(contentOf(m_directory / "out.mp4"), "new");
}

TEST_F(PartialFileTest, ReplacesTheTargetOfALinkAndKeepsTheLink)
{
    m_directory.write("folder/old.mp4", "old");
    fs::create_symlink("folder/old.mp4", m_directory / "out.mp4");
    const PartialFile partial(destination(true));
    EXPECT_EQ(partial.path().parent_path(), m_directory / "folder");
    m_directory.write(fs::path("folder") / partial.path().filename(), "new");
    partial.moveIntoPlace();
    EXPECT_TRUE(fs::is_symlink(m_directory / "out.mp4"));
    EXPECT_EQ(contentOf(m_directory / "folder/old.mp4"), "new");
}

TEST_F(PartialFileTest, ThrowsBeforeRenderingWhenTheFolderCannotBeWritten)
{
    // No user can create a file in /proc.
    const fs::path nowhere = "/proc/self/out.mp4";
    try {
        const PartialFile partial(Destination::check(m_source, nowhere, false));
        FAIL() << "a file was made in " << nowhere;
    } catch (const SystemError& error) {
        EXPECT_NE(std::string(error.what()).find("Could not write “/proc/self/out.mp4”"), std::string::npos)
            << error.what();
    }
}

TEST_F(PartialFileTest, ThrowsTheSystemsErrorWhenTheFolderCannotBeWritten)
{
    static int reason = 0;
    ScopedSystemCalls calls;
    // Creating the file fails, and so does opening it afterwards, with ENOENT. The message must show the
    // error of the creation.
    calls->open = [](const char*, int flags, mode_t) {
        errno = (flags & O_CREAT) != 0 ? reason : ENOENT;
        return -1;
    };
    for (const int expected : {EACCES, EROFS, ENOSPC}) {
        reason = expected;
        try {
            const PartialFile partial(destination(false));
            FAIL() << "a file was made";
        } catch (const SystemError& error) {
            EXPECT_EQ(error.code().value(), expected) << error.what();
        }
    }
}

} // namespace

} // namespace stackreel
