#include "media/PreviewCopies.h"

#include "system/PrivateFolder.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/ScopedSystemCalls.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <functional>

namespace stackreel
{

namespace
{

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

class PreviewCopiesTest : public testing::Test
{
protected:
    /// The names in the folder of the copies.
    Names names() const
    {
        Names names;
        for (const auto& entry : fs::directory_iterator(m_folder))
            names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }

    const TemporaryDirectory m_temporary;
    const ScopedEnvironment m_place{"TMPDIR", m_temporary.path().string()};
    const fs::path m_folder = PrivateFolder::pathOfUser("Stackreel");
};

} // namespace

TEST_F(PreviewCopiesTest, AreInAFolderOfTheUsersOwn)
{
    const auto first = PreviewCopies::newFile();
    const auto second = PreviewCopies::newFile();
    EXPECT_NE(first, second);
    EXPECT_EQ(first.parent_path(), m_folder);
    EXPECT_EQ(second.parent_path(), m_folder);
    EXPECT_EQ(fs::status(m_folder).permissions(), fs::perms::owner_all);
}

TEST_F(PreviewCopiesTest, UseANewPrivateFolderWhenTheirFolderCannotBeUsed)
{
    fs::create_directory(m_temporary / "elsewhere");
    const auto plantLink = [this] { fs::create_directory_symlink(m_temporary / "elsewhere", m_folder); };
    const auto plantFolder = [this] {
        fs::create_directory(m_folder);
        if (::geteuid() == 0) // only root can give a folder to another user
            ASSERT_EQ(::chown(m_folder.c_str(), 54321, 54321), 0);
        else
            fs::permissions(m_folder, fs::perms(0));
    };
    const auto plantFile = [this] { m_temporary.write(m_folder.filename(), "a file in the way"); };
    for (const std::function<void()>& plant :
         {std::function<void()>(plantLink), {plantFolder}, {plantFile}}) {
        plant();
        const auto copy = PreviewCopies::newFile();
        EXPECT_EQ(copy.extension(), ".mp4");
        EXPECT_EQ(copy.parent_path().parent_path(), m_temporary.path());
        EXPECT_NE(copy.parent_path(), m_folder);
        EXPECT_EQ(fs::status(copy.parent_path()).permissions(), fs::perms::owner_all);
        EXPECT_EQ(fs::status(copy.parent_path()).type(), fs::file_type::directory);
        fs::remove(m_folder);
    }
    EXPECT_TRUE(fs::is_empty(m_temporary / "elsewhere"));
}

TEST_F(PreviewCopiesTest, UseAnotherNewFolderAfterTheirsWasRemoved)
{
    m_temporary.write(m_folder.filename(), "a file in the way");
    const auto removed = PreviewCopies::newFile().parent_path();
    fs::remove(removed);
    const auto folder = PreviewCopies::newFile().parent_path();
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
    EXPECT_EQ(PreviewCopies::newFile().parent_path(), folder);

    fs::remove(folder);
    fs::create_directory(m_temporary / "elsewhere");
    fs::create_directory_symlink(m_temporary / "elsewhere", folder);
    EXPECT_NE(PreviewCopies::newFile().parent_path(), folder) << "somebody's link has its name";
}

TEST_F(PreviewCopiesTest, OfEarlierRunsAreRemoved)
{
    m_temporary.write(m_folder.filename() / "one.mp4", "an earlier copy");
    m_temporary.write(m_folder.filename() / "two.mp4", "an earlier copy");
    m_temporary.write(m_folder.filename() / "note.txt", "no copy");
    m_temporary.write("clip.mp4", "no copy");
    fs::create_symlink(m_temporary / "clip.mp4", m_folder / "link.mp4");
    PreviewCopies::removeUnused();
    EXPECT_EQ(names(), Names{"note.txt"});
    EXPECT_TRUE(fs::exists(m_temporary / "clip.mp4"));
}

TEST_F(PreviewCopiesTest, OfThisOrAnotherRunningProgramStay)
{
    const auto copy = PreviewCopies::newFile();
    m_temporary.write(m_folder.filename() / copy.filename(), "in use");
    PreviewCopies::removeUnused();
    EXPECT_TRUE(fs::exists(copy));
}

TEST_F(PreviewCopiesTest, AreNotRemovedThroughAPlantedLink)
{
    m_temporary.write("elsewhere/film.mp4", "somebody's film");
    fs::create_directory_symlink(m_temporary / "elsewhere", m_folder);
    PreviewCopies::removeUnused();
    EXPECT_TRUE(fs::exists(m_temporary / "elsewhere/film.mp4"));
}

TEST_F(PreviewCopiesTest, AreNotRemovedThroughALinkThatTakesTheNameOfTheirFolder)
{
    m_temporary.write("elsewhere/film.mp4", "somebody's film");
    m_temporary.write(m_folder.filename() / "one.mp4", "an earlier copy");
    static const SystemCalls before = systemCalls();
    ScopedSystemCalls calls;
    calls->openat = [](int folder, const char* path, int flags, mode_t mode) {
        const int descriptor = before.openat(folder, path, flags, mode);
        if (const fs::path name = path; name == PrivateFolder::pathOfUser("Stackreel")) {
            fs::rename(name, name.string() + " renamed");
            fs::create_directory_symlink(name.parent_path() / "elsewhere", name);
        }
        return descriptor;
    };
    PreviewCopies::removeUnused();
    EXPECT_TRUE(fs::exists(m_temporary / "elsewhere/film.mp4"));
    EXPECT_TRUE(fs::is_empty(m_folder.string() + " renamed"));
}

TEST_F(PreviewCopiesTest, NeedNoFolderToBeRemoved)
{
    PreviewCopies::removeUnused();
    EXPECT_TRUE(m_temporary.names().empty());
}

} // namespace stackreel
