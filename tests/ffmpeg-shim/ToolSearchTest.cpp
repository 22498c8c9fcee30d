#include "ffmpeg-shim/ToolSearch.h"

#include "tests/support/ScopedEnvironment.h"
#include "tests/support/ScopedWorkingDirectory.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace stackreel::shim
{

namespace
{

constexpr const char* script = "#!/bin/sh\n";
constexpr const char* visitedVariable = "STACKREEL_SHIM_VISITED_tool";

/// The path that `findTool` returns for the name "tool"; empty if it finds nothing.
std::string pathFound(const std::vector<std::string>& folders, const std::vector<FileIdentity>& avoided = {})
{
    const auto tool = findTool("tool", folders, avoided);
    return tool ? tool->path : "";
}

} // namespace

TEST(ToolSearch, OnlyAbsoluteEntriesOfThePathAreFolders)
{
    using Folders = std::vector<std::string>;
    struct Row {
        const char* path;
        Folders expected;
    };
    const Row rows[] = {
        {nullptr, {"/usr/local/bin", "/usr/bin", "/bin"}},
        {"", {}},
        {":", {}},
        {"/a", {"/a"}},
        {"/a:/b", {"/a", "/b"}},
        {":/a::/b:", {"/a", "/b"}},
        {".:bin:../bin:~/bin:/a", {"/a"}},
        {"/a/:/", {"/a/", "/"}},
        {"/with blank:/\xff", {"/with blank", "/\xff"}},
        {"/a:/a", {"/a", "/a"}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(searchFolders(row.path), row.expected) << (row.path ? row.path : "(unset)");
}

TEST(ToolSearch, TheFirstFolderWithTheToolWins)
{
    const TemporaryDirectory folder;
    const std::string first = folder.writeExecutable("first/tool", script).string();
    const std::string second = folder.writeExecutable("second/tool", script).string();
    const std::string one = (folder / "first").string();
    const std::string two = (folder / "second").string();
    EXPECT_EQ(pathFound({one, two}), first);
    EXPECT_EQ(pathFound({two, one}), second);
    EXPECT_EQ(pathFound({(folder / "absent").string(), two + '/'}), second);
    EXPECT_EQ(pathFound({}), "");
}

TEST(ToolSearch, SkipsFilesThatCannotBeExecuted)
{
    const TemporaryDirectory folder;
    std::filesystem::create_directories(folder / "directory" / "tool");
    folder.write("plain/tool", script);
    std::filesystem::create_directories(folder / "dangling");
    std::filesystem::create_symlink(folder / "nowhere", folder / "dangling" / "tool");
    const std::string good = folder.writeExecutable("good/tool", script).string();
    for (const char* bad : {"directory", "plain", "dangling"}) {
        EXPECT_EQ(pathFound({(folder / bad).string()}), "") << bad;
        EXPECT_EQ(pathFound({(folder / bad).string(), (folder / "good").string()}), good) << bad;
    }
}

TEST(ToolSearch, SkipsAvoidedFilesUnderAnyName)
{
    const TemporaryDirectory folder;
    const std::string avoided = folder.writeExecutable("own/tool", script).string();
    std::filesystem::create_directories(folder / "links");
    std::filesystem::create_symlink(avoided, folder / "links" / "tool");
    const std::string copy = folder.writeExecutable("copy/tool", script).string();
    const std::vector<FileIdentity> own{identityOf(avoided).value()};
    const std::vector<std::string> folders{(folder / "own").string(), (folder / "links").string(),
                                           (folder / "copy").string()};
    EXPECT_EQ(pathFound(folders), avoided);
    EXPECT_EQ(pathFound(folders, own), copy);
}

TEST(ToolSearch, ExcludesAVisitedToolInChildProcesses)
{
    const TemporaryDirectory folder;
    const std::string first = folder.writeExecutable("first/tool", script).string();
    const std::string second = folder.writeExecutable("second/tool", script).string();
    const ScopedEnvironment path("PATH", (folder / "first").string() + ':' + (folder / "second").string());
    const ScopedEnvironment visited(visitedVariable, std::nullopt);
    EXPECT_EQ(systemTool("tool"), first);
    const auto handedDown = identitiesFromText(std::getenv(visitedVariable));
    EXPECT_EQ(handedDown, (std::vector{identityOf("/proc/self/exe").value(), identityOf(first).value()}));
    EXPECT_EQ(systemTool("tool"), second);
    EXPECT_EQ(systemTool("tool"), std::nullopt);
}

TEST(ToolSearch, FindsOneFileUnderTwoNames)
{
    const TemporaryDirectory folder;
    const std::string launcher = folder.writeExecutable("launcher", script).string();
    std::filesystem::create_directories(folder / "bin");
    for (const char* name : {"tool", "other"})
        std::filesystem::create_symlink(launcher, folder / "bin" / name);
    const ScopedEnvironment path("PATH", (folder / "bin").string());
    const ScopedEnvironment visited(visitedVariable, std::nullopt);
    const ScopedEnvironment otherVisited("STACKREEL_SHIM_VISITED_other", std::nullopt);
    EXPECT_EQ(systemTool("tool"), (folder / "bin" / "tool").string());
    EXPECT_EQ(systemTool("other"), (folder / "bin" / "other").string());
    EXPECT_EQ(systemTool("tool"), std::nullopt);
}

TEST(ToolSearch, TheFoldersOfTheLocatorComeBeforeThePath)
{
    const TemporaryDirectory folder;
    const std::string onPath = folder.writeExecutable("path/tool", script).string();
    std::filesystem::create_directories(folder / "parent" / "working");
    const ScopedEnvironment path("PATH", (folder / "path").string());
    const ScopedWorkingDirectory working(folder / "parent" / "working");
    const auto found = [] {
        const ScopedEnvironment visited(visitedVariable, std::nullopt);
        return systemTool("tool");
    };
    EXPECT_EQ(found(), onPath);
    const std::string inParent =
        folder.writeExecutable("parent/third_party/ffmpeg/bin/tool", script).string();
    EXPECT_EQ(found(), inParent);
    const std::string inWorking =
        folder.writeExecutable("parent/working/third_party/ffmpeg/bin/tool", script).string();
    EXPECT_EQ(found(), inWorking);
    std::filesystem::permissions(inWorking, std::filesystem::perms::owner_read);
    EXPECT_EQ(found(), inParent);
}

TEST(ToolSearch, TheFixedFoldersAreThoseOfTheLocatorInItsOrder)
{
    using Folders = std::vector<std::string>;
    const Folders always{"/opt/homebrew/bin", "/usr/local/bin"};
    EXPECT_EQ(fixedFolders("/a b/c"), (Folders{"/a b/c/third_party/ffmpeg/bin", "/a b/third_party/ffmpeg/bin",
                                               always[0], always[1]}));
    EXPECT_EQ(fixedFolders(std::nullopt), always);
}

TEST(ToolSearch, NeverFindsThisProgram)
{
    const TemporaryDirectory folder;
    std::filesystem::create_directories(folder / "bin");
    std::filesystem::create_symlink("/proc/self/exe", folder / "bin" / "tool");
    const ScopedEnvironment path("PATH", (folder / "bin").string());
    const ScopedEnvironment visited(visitedVariable, "nonsense,1:");
    EXPECT_EQ(systemTool("tool"), std::nullopt);
    EXPECT_STREQ(std::getenv(visitedVariable), "nonsense,1:");
}

} // namespace stackreel::shim
