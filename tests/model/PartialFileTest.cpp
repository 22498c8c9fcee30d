#include "model/PartialFile.h"

#include "media/CancellationError.h"
#include "model/ExportError.h"
#include "system/SystemError.h"
#include "tests/support/ScopedSystemCalls.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace stackreel
{

namespace
{

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

class PartialFileTest : public testing::Test
{
protected:
    Destination destination(bool overwrite) const
    {
        return Destination::check(m_source, m_directory / "out.mp4", overwrite);
    }
    static void render(const PartialFile& partial, const std::string& content)
    {
        std::ofstream(partial.path()) << content;
    }
    fs::perms permissionsOf(const fs::path& name) const
    {
        return fs::status(m_directory / name).permissions();
    }

    TemporaryDirectory m_directory;
    fs::path m_source = m_directory.write("clip.mov", "source");
};

TEST_F(PartialFileTest, IsAHiddenNameBesideItsDestination)
{
    PartialFile partial(destination(false), PartialFile::Name::hidden);
    EXPECT_EQ(partial.path().parent_path(), m_directory.path());
    EXPECT_TRUE(partial.path().filename().string().starts_with(".stackreel-"));
    EXPECT_EQ(partial.path().extension(), ".mp4");
    EXPECT_EQ(m_directory.names(), (Names{partial.path().filename(), "clip.mov"}));
    EXPECT_NE(PartialFile(destination(false), PartialFile::Name::hidden).path(), partial.path());
}

TEST_F(PartialFileTest, IsRemovedWithTheObjectUnlessItWasMoved)
{
    {
        PartialFile partial(destination(false), PartialFile::Name::hidden);
        render(partial, "half");
    }
    EXPECT_EQ(m_directory.names(), Names{"clip.mov"});
    {
        PartialFile partial(destination(false), PartialFile::Name::hidden);
        render(partial, "whole");
        partial.moveIntoPlace();
    }
    EXPECT_EQ(m_directory.names(), (Names{"clip.mov", "out.mp4"}));
    EXPECT_EQ(contentOf(m_directory / "out.mp4"), "whole");
}

TEST_F(PartialFileTest, KeepsAFileThatAppearedAtTheDestination)
{
    PartialFile partial(destination(false), PartialFile::Name::hidden);
    render(partial, "new");
    m_directory.write("out.mp4", "somebody's");
    EXPECT_THROW(partial.moveIntoPlace(), ExportError);
    EXPECT_EQ(contentOf(m_directory / "out.mp4"), "somebody's");
}

TEST_F(PartialFileTest, ReplacesAnExistingFileWithOverwrite)
{
    m_directory.write("out.mp4", "old");
    PartialFile partial(destination(true), PartialFile::Name::hidden);
    render(partial, "new");
    partial.moveIntoPlace();
    EXPECT_EQ(contentOf(m_directory / "out.mp4"), "new");
}

TEST_F(PartialFileTest, ReplacesTheTargetOfALinkAndKeepsTheLink)
{
    m_directory.write("folder/old.mp4", "old");
    fs::create_symlink("folder/old.mp4", m_directory / "out.mp4");
    PartialFile partial(destination(true), PartialFile::Name::hidden);
    EXPECT_EQ(partial.path().parent_path(), m_directory / "folder");
    render(partial, "new");
    partial.moveIntoPlace();
    EXPECT_TRUE(fs::is_symlink(m_directory / "out.mp4"));
    EXPECT_EQ(contentOf(m_directory / "folder/old.mp4"), "new");
}

TEST_F(PartialFileTest, LeavesAFileOfAnotherProgramThatTookItsName)
{
    for (const bool exists : {false, true}) {
        for (const auto name : {PartialFile::Name::hidden, PartialFile::Name::visible}) {
            if (exists)
                m_directory.write("out.mp4", "old");
            auto partial = std::make_unique<PartialFile>(destination(true), name);
            const fs::path path = partial->path();
            render(*partial, "ours");
            fs::rename(m_directory.write("other", "theirs"), path);
            EXPECT_THROW(partial->moveIntoPlace(), ExportError);
            partial.reset();
            EXPECT_EQ(contentOf(path), "theirs") << path;
            if (exists) {
                EXPECT_EQ(contentOf(m_directory / "out.mp4"), "old");
            }
            fs::remove(path);
        }
    }
}

TEST_F(PartialFileTest, ChangesNothingThroughALinkThatTookItsName)
{
    m_directory.write("out.mp4", "old");
    fs::permissions(m_directory / "out.mp4", fs::perms(0666));
    fs::permissions(m_directory.write("private", "secret"), fs::perms(0600));
    PartialFile partial(destination(true), PartialFile::Name::visible);
    render(partial, "new");
    fs::remove(partial.path());
    fs::create_symlink("private", partial.path());
    EXPECT_THROW(partial.moveIntoPlace(), ExportError);
    EXPECT_EQ(permissionsOf("private"), fs::perms(0600));
    EXPECT_EQ(contentOf(m_directory / "out.mp4"), "old");
}

TEST_F(PartialFileTest, ThrowsBeforeRenderingWhenTheFolderCannotBeWritten)
{
    // No user can create a file in /proc.
    const fs::path nowhere = "/proc/self/out.mp4";
    try {
        PartialFile partial(Destination::check(m_source, nowhere, false), PartialFile::Name::hidden);
        FAIL() << "a file was made in " << nowhere;
    } catch (const SystemError& error) {
        EXPECT_NE(std::string(error.what()).find("Could not write “/proc/self/out.mp4”"), std::string::npos)
            << error.what();
    }
}

TEST_F(PartialFileTest, ThrowsBeforeRenderingWhenAnothersFileInAStickyFolderCannotBeReplaced)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a file of another user";
    const auto everything = fs::perms::all | fs::perms::sticky_bit;
    fs::permissions(m_directory.path(), everything);
    fs::permissions(m_directory.write("out.mp4", "theirs"), fs::perms(0666));
    const uid_t nobody = 65534;
    for (const auto name : {PartialFile::Name::hidden, PartialFile::Name::visible}) {
        ASSERT_EQ(::seteuid(nobody), 0);
        EXPECT_THROW(PartialFile(destination(true), name), SystemError);
        ASSERT_EQ(::seteuid(0), 0);
        EXPECT_NO_THROW(PartialFile(destination(true), name)) << "root may";
    }
    EXPECT_EQ(m_directory.names(), (Names{"clip.mov", "out.mp4"}));
    EXPECT_EQ(contentOf(m_directory / "out.mp4"), "theirs");
}

TEST_F(PartialFileTest, ThrowsTheSystemsErrorWhenTheFolderCannotBeWritten)
{
    static int reason = 0;
    ScopedSystemCalls calls;
    calls->openat = [](int folder, const char* path, int flags, mode_t mode) {
        if ((flags & O_CREAT) == 0)
            return ::openat(folder, path, flags, mode);
        errno = reason;
        return -1;
    };
    for (const int expected : {EACCES, EROFS, ENOSPC}) {
        reason = expected;
        try {
            PartialFile partial(destination(false), PartialFile::Name::hidden);
            FAIL() << "a file was made";
        } catch (const SystemError& error) {
            EXPECT_EQ(error.code().value(), expected) << error.what();
        }
    }
}

TEST_F(PartialFileTest, KeepsThePermissionsOfTheFileThatItReplaces)
{
    for (const auto permissions : {fs::perms(0600), fs::perms(0640), fs::perms(0666), fs::perms(0444)}) {
        m_directory.write("out.mp4", "old");
        fs::permissions(m_directory / "out.mp4", permissions);
        PartialFile partial(destination(true), PartialFile::Name::hidden);
        EXPECT_EQ(permissionsOf(partial.path()) & ~(permissions | fs::perms(0200)), fs::perms::none)
            << "nobody else may read it before";
        render(partial, "new");
        partial.moveIntoPlace();
        EXPECT_EQ(permissionsOf("out.mp4"), permissions);
        EXPECT_EQ(contentOf(m_directory / "out.mp4"), "new");
        fs::remove(m_directory / "out.mp4");
    }
}

TEST_F(PartialFileTest, HasTheUsersDefaultPermissionsWhereItReplacesNothing)
{
    m_directory.write("other", "");
    PartialFile partial(destination(true), PartialFile::Name::hidden);
    render(partial, "new");
    partial.moveIntoPlace();
    EXPECT_EQ(permissionsOf("out.mp4"), permissionsOf("other"));
}

TEST_F(PartialFileTest, IsRemovedFromAFolderThatWasRenamed)
{
    const fs::path file = m_directory.path() / "folder/out.mp4";
    fs::create_directory(file.parent_path());
    {
        PartialFile partial(Destination::check(m_source, file, true), PartialFile::Name::hidden);
        render(partial, "half");
        fs::rename(file.parent_path(), m_directory / "renamed");
        EXPECT_THROW(partial.moveIntoPlace(), ExportError);
        fs::create_directory(file.parent_path());
        EXPECT_THROW(partial.moveIntoPlace(), ExportError) << "another folder";
    }
    EXPECT_TRUE(fs::is_empty(m_directory / "renamed"));
}

TEST_F(PartialFileTest, WritesTheFileBeforeAndTheFolderAfterTheMoveToDisk)
{
    static std::vector<bool> folders;
    static fs::path moved;
    folders.clear();
    moved = m_directory / "out.mp4";
    PartialFile partial(destination(true), PartialFile::Name::hidden);
    render(partial, "new");
    ScopedSystemCalls calls;
    calls->fsync = [](int descriptor) {
        struct stat found = {};
        ::fstat(descriptor, &found);
        folders.push_back(S_ISDIR(found.st_mode));
        EXPECT_EQ(fs::exists(moved), S_ISDIR(found.st_mode));
        return 0;
    };
    partial.moveIntoPlace();
    EXPECT_EQ(folders, (std::vector<bool>{false, true}));
}

TEST_F(PartialFileTest, IsNotMovedWhenItCannotBeWrittenToDisk)
{
    m_directory.write("out.mp4", "old");
    PartialFile partial(destination(true), PartialFile::Name::hidden);
    render(partial, "new");
    ScopedSystemCalls calls;
    calls->fsync = [](int) {
        errno = ENOSPC;
        return -1;
    };
    EXPECT_THROW(partial.moveIntoPlace(), SystemError);
    EXPECT_EQ(contentOf(m_directory / "out.mp4"), "old");
}

class VisiblePartialFileTest : public PartialFileTest
{
protected:
    /// The name of the partial file for a destination of this name.
    std::string nameFor(const fs::path& name) const
    {
        return PartialFile(Destination::check(m_source, m_directory / name, true), PartialFile::Name::visible)
            .path()
            .filename();
    }
};

TEST_F(VisiblePartialFileTest, IsTheDestinationWhereThereIsNone)
{
    EXPECT_EQ(nameFor("out.mp4"), "out.mp4");
    EXPECT_EQ(m_directory.names(), Names{"clip.mov"}) << "removed with the object";
}

TEST_F(VisiblePartialFileTest, HasANameThatSaysSoWhereTheDestinationExists)
{
    const std::string longest = std::string(251, 'x') + ".mp4";
    for (const std::string& name : {std::string("out.mp4"), std::string("a.b.MP4"), longest})
        m_directory.write(name, "old");
    EXPECT_EQ(nameFor("out.mp4"), "out (unfinished).mp4");
    EXPECT_EQ(nameFor("a.b.MP4"), "a.b (unfinished).MP4");
    EXPECT_EQ(nameFor(longest), "Export (unfinished).mp4");
    m_directory.write("out (unfinished).mp4", "an earlier one");
    m_directory.write("out (unfinished 2).mp4", "another");
    EXPECT_EQ(nameFor("out.mp4"), "out (unfinished 3).mp4");
}

TEST_F(VisiblePartialFileTest, HasTheChosenExtensionWhereALinkLeadsToAnother)
{
    fs::create_symlink("target.mkv", m_directory / "out.mp4");
    PartialFile partial(destination(true), PartialFile::Name::visible);
    EXPECT_EQ(partial.path().extension(), ".mp4") << "FFmpeg chooses the format by it";
    render(partial, "whole");
    partial.moveIntoPlace();
    EXPECT_EQ(contentOf(m_directory / "target.mkv"), "whole");
}

TEST_F(PartialFileTest, IsNotMovedAfterACancellation)
{
    m_directory.write("out.mp4", "old");
    std::stop_source cancelled;
    cancelled.request_stop();
    {
        PartialFile partial(destination(true), PartialFile::Name::visible);
        render(partial, "whole");
        EXPECT_THROW(partial.moveIntoPlace(cancelled.get_token()), CancellationError);
    }
    EXPECT_EQ(m_directory.names(), (Names{"clip.mov", "out.mp4"}));
    EXPECT_EQ(contentOf(m_directory / "out.mp4"), "old");
}

TEST_F(VisiblePartialFileTest, StaysUnlessEmptyWhenItIsKept)
{
    m_directory.write("out.mp4", "old");
    for (const char* content : {"", "half"}) {
        PartialFile partial(destination(true), PartialFile::Name::visible);
        render(partial, content);
        partial.keep();
    }
    EXPECT_EQ(m_directory.names(), (Names{"clip.mov", "out (unfinished).mp4", "out.mp4"}));
    EXPECT_EQ(contentOf(m_directory / "out (unfinished).mp4"), "half");
}

TEST_F(VisiblePartialFileTest, IsInPlaceWhereItIsTheDestination)
{
    {
        PartialFile partial(destination(true), PartialFile::Name::visible);
        render(partial, "whole");
        partial.moveIntoPlace();
    }
    EXPECT_EQ(contentOf(m_directory / "out.mp4"), "whole");
    {
        fs::remove(m_directory / "out.mp4");
        PartialFile partial(destination(true), PartialFile::Name::visible);
        render(partial, "half");
    }
    EXPECT_EQ(m_directory.names(), Names{"clip.mov"}) << "cancelled";
}

} // namespace

} // namespace stackreel
