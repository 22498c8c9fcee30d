#include "desktop/panels/qt/PanelFolders.h"

#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace stackreel
{

namespace
{

TEST(PanelFoldersTest, KeepsTheOpenPanelsFolderBetweenRuns)
{
    const TemporaryDirectory state;
    const auto file = state / "new/stackreel/open-folder";
    for (const char* folder : {"/clips", "/a folder/50% \"off\"", "/-v", "/\u00e9t\u00e9/\u6620\u753b",
                               "/two\nlines\n", "/latin\xe9", "/"}) {
        PanelFolders(file).setOpenedFile(std::filesystem::path(folder) / "clip.mov");
        EXPECT_EQ(PanelFolders(file).open(), folder);
        EXPECT_EQ(PanelFolders(file).save(), "") << "it starts beside the source";
    }
}

TEST(PanelFoldersTest, CountsAMissingOrUnusableFileAsEmpty)
{
    const TemporaryDirectory state;
    ASSERT_EQ(::mkfifo((state / "pipe").c_str(), 0600), 0);
    for (const auto& file : {state / "missing", state / "pipe", state.path(), state.write("empty", ""),
                             state.write("relative", "clips"), std::filesystem::path()})
        EXPECT_EQ(PanelFolders(file).open(), "") << file;
    EXPECT_LE(PanelFolders(state.write("long", std::string(100'000, '/'))).open().native().size(), 4096U);
}

TEST(PanelFoldersTest, KeepsTheFolderWithinARunWhenTheFileCannotBeWritten)
{
    PanelFolders folders("/proc/none/open-folder");
    folders.setOpenedFile("/clips/clip.mov");
    EXPECT_EQ(folders.open(), "/clips");
}

TEST(PanelFoldersTest, UsesAFileInTheUsersStateFolder)
{
    const ScopedEnvironment state("XDG_STATE_HOME", "/some/state");
    EXPECT_EQ(PanelFolders::standardFile(), "/some/state/stackreel/open-folder");
}

} // namespace

} // namespace stackreel
