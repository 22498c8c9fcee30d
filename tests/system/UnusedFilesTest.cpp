#include "system/UnusedFiles.h"

#include "system/Files.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <chrono>

namespace stackreel
{

namespace
{

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

bool isOurs(const std::string& name)
{
    return name.starts_with("ours");
}

bool isOutput(const std::string& name)
{
    return name == "stdout";
}

void makeOld(const fs::path& path)
{
    fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(25));
}

fs::path writeOld(const TemporaryDirectory& folder, const std::string& name)
{
    fs::path file = folder.write(name, "content");
    makeOld(file);
    return file;
}

TEST(UnusedFilesTest, RemovesOnlyOldFilesWithSuchANameThatNobodyHasOpen)
{
    const TemporaryDirectory folder;
    writeOld(folder, "ours");
    writeOld(folder, "other");
    folder.write("ours, new", "content");
    const WriteHandle open(writeOld(folder, "ours, open"));
    UnusedFiles::remove(folder.path(), isOurs);
    EXPECT_EQ(folder.names(), (Names{"other", "ours, new", "ours, open"}));
}

TEST(UnusedFilesTest, RemovesNoLinkAndNoFolderWithSuchAName)
{
    const TemporaryDirectory folder;
    writeOld(folder, "other");
    fs::create_symlink("other", folder / "ours, a link");
    fs::create_directory(folder / "ours, a folder");
    makeOld(folder / "ours, a folder");
    UnusedFiles::remove(folder.path(), isOurs);
    EXPECT_EQ(folder.names(), (Names{"other", "ours, a folder", "ours, a link"}));
}

TEST(UnusedFilesTest, DoesNothingWhereThereIsNoFolder)
{
    UnusedFiles::remove("/does not exist", isOurs);
    UnusedFiles::removeFolders("/does not exist", isOurs, isOutput);
}

TEST(UnusedFilesTest, RemovesOldFoldersInWhichNoFileIsOpen)
{
    const TemporaryDirectory folder;
    for (const char* const name : {"ours, old", "ours, new", "other"})
        writeOld(folder, std::string(name) + "/stdout");
    writeOld(folder, "ours, with a copy/copy.mp4");
    fs::create_directory(folder / "ours, empty");
    const WriteHandle open(writeOld(folder, "ours, open/stdout"));
    for (const char* const name : {"ours, old", "ours, open", "other", "ours, with a copy", "ours, empty"})
        makeOld(folder / name);
    UnusedFiles::removeFolders(folder.path(), isOurs, isOutput);
    EXPECT_EQ(folder.names(),
              (Names{"other", "ours, empty", "ours, new", "ours, open", "ours, with a copy"}));
    EXPECT_TRUE(fs::exists(folder / "ours, open/stdout"));
}

TEST(UnusedFilesTest, FollowsNoLinkToAFolder)
{
    const TemporaryDirectory folder;
    writeOld(folder, "other/stdout");
    makeOld(folder / "other");
    fs::create_directory_symlink("other", folder / "ours");
    UnusedFiles::removeFolders(folder.path(), isOurs, isOutput);
    EXPECT_TRUE(fs::exists(folder / "other/stdout"));
}

} // namespace

} // namespace stackreel
