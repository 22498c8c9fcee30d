#include "media/ToolLocator.h"

#include "media/MediaToolError.h"
#include "system/Files.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace stackreel
{

namespace
{

using Paths = std::vector<std::filesystem::path>;

ToolLocator::Environment environment(const Paths& executables)
{
    return {.resourceDirectory = "/app/lib/stackreel",
            .workingDirectory = "/home/user/check out/sub",
            .isExecutable = [executables](const std::filesystem::path& path) {
                return std::find(executables.begin(), executables.end(), path) != executables.end();
            }};
}

std::filesystem::path located(MediaTool tool, const Paths& executables)
{
    return ToolLocator::locate(tool, environment(executables));
}

} // namespace

TEST(LocatingATool, TriesFivePathsInOrder)
{
    EXPECT_EQ(ToolLocator::candidates(MediaTool::ffmpeg, environment({})),
              (Paths{"/app/lib/stackreel/ffmpeg", "/home/user/check out/sub/third_party/ffmpeg/bin/ffmpeg",
                     "/home/user/check out/third_party/ffmpeg/bin/ffmpeg", "/opt/homebrew/bin/ffmpeg",
                     "/usr/local/bin/ffmpeg"}));
}

TEST(LocatingATool, ReturnsTheFirstExecutablePath)
{
    Paths paths = ToolLocator::candidates(MediaTool::ffprobe, environment({}));
    while (!paths.empty()) {
        EXPECT_EQ(located(MediaTool::ffprobe, paths), paths.front());
        paths.erase(paths.begin());
    }
}

TEST(LocatingATool, PrefersTheResourceDirectory)
{
    EXPECT_EQ(located(MediaTool::ffmpeg, {"/opt/homebrew/bin/ffmpeg", "/app/lib/stackreel/ffmpeg"}),
              "/app/lib/stackreel/ffmpeg");
}

TEST(LocatingATool, FindsTheToolOfACheckoutFromASubfolder)
{
    EXPECT_EQ(located(MediaTool::ffmpeg, {"/home/user/check out/third_party/ffmpeg/bin/ffmpeg"}),
              "/home/user/check out/third_party/ffmpeg/bin/ffmpeg");
}

TEST(LocatingATool, NeverLooksElsewhere)
{
    const Paths elsewhere = {"/usr/bin/ffprobe",
                             "/bin/ffprobe",
                             "/app/lib/stackreel/third_party/ffmpeg/bin/ffprobe",
                             "/home/user/check out/sub/ffprobe",
                             "/home/user/third_party/ffmpeg/bin/ffprobe",
                             "/app/lib/stackreel/ffmpeg"};
    EXPECT_THROW(located(MediaTool::ffprobe, elsewhere), MediaToolError);
}

TEST(LocatingATool, SkipsAMissingResourceOrWorkingDirectory)
{
    ToolLocator::Environment incomplete = environment({});
    incomplete.resourceDirectory = std::nullopt;
    EXPECT_EQ(ToolLocator::candidates(MediaTool::ffmpeg, incomplete).size(), 4U);
    incomplete.workingDirectory = std::nullopt;
    EXPECT_EQ(ToolLocator::candidates(MediaTool::ffmpeg, incomplete),
              (Paths{"/opt/homebrew/bin/ffmpeg", "/usr/local/bin/ffmpeg"}));
}

TEST(LocatingATool, TreatsTheRootAsItsOwnParent)
{
    ToolLocator::Environment atRoot = environment({});
    atRoot.workingDirectory = "/";
    const Paths paths = ToolLocator::candidates(MediaTool::ffmpeg, atRoot);
    EXPECT_EQ(paths.at(1), "/third_party/ffmpeg/bin/ffmpeg");
    EXPECT_EQ(paths.at(2), "/third_party/ffmpeg/bin/ffmpeg");
}

TEST(LocatingATool, NamesTheMissingTool)
{
    for (const MediaTool tool : {MediaTool::ffmpeg, MediaTool::ffprobe}) {
        const std::string name(executableName(tool));
        try {
            located(tool, {});
            FAIL() << "no error";
        } catch (const MediaToolError& error) {
            EXPECT_EQ(error, MediaToolError::toolMissing(name));
            EXPECT_EQ(error.errorDescription(), name + " is missing. Build the bundled media tools first.");
        }
    }
}

TEST(LocatingATool, SkipsFilesThatMayNotBeExecuted)
{
    const TemporaryDirectory directory;
    directory.write("resources/ffprobe", "");
    std::filesystem::create_directories(directory / "third_party/ffmpeg/bin/ffprobe");
    std::filesystem::create_directories(directory / "sub/third_party/ffmpeg/bin");
    std::filesystem::create_symlink("nowhere", directory / "sub/third_party/ffmpeg/bin/ffprobe");
    ToolLocator::Environment real = {.resourceDirectory = directory / "resources",
                                     .workingDirectory = directory / "sub",
                                     .isExecutable = Files::isExecutable};
    const auto isSkipped = [&](const std::filesystem::path& path) {
        try {
            return ToolLocator::locate(MediaTool::ffprobe, real) != path;
        } catch (const MediaToolError&) {
            return true;
        }
    };
    for (const auto& path : {directory / "resources/ffprobe", directory / "third_party/ffmpeg/bin/ffprobe",
                             directory / "sub/third_party/ffmpeg/bin/ffprobe"})
        EXPECT_TRUE(isSkipped(path)) << path;
    std::filesystem::permissions(directory / "resources/ffprobe", std::filesystem::perms::owner_all);
    EXPECT_EQ(ToolLocator::locate(MediaTool::ffprobe, real), directory / "resources/ffprobe");
}

} // namespace stackreel
