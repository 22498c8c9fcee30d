#include "media/PreviewCopies.h"

#include "platform/PrivateFolder.h"
#include "platform/SystemError.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>

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

TEST_F(PreviewCopiesTest, AreNotWrittenThroughAPlantedLink)
{
    fs::create_directory(m_temporary / "elsewhere");
    fs::create_directory_symlink(m_temporary / "elsewhere", m_folder);
    EXPECT_THROW(PreviewCopies::newFile(), SystemError);
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

TEST_F(PreviewCopiesTest, NeedNoFolderToBeRemoved)
{
    PreviewCopies::removeUnused();
    EXPECT_TRUE(m_temporary.names().empty());
}

} // namespace stackreel
