#include "cli/AbsolutePath.h"

#include "cli/CliError.h"
#include "tests/support/ScopedWorkingDirectory.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace stackreel
{

TEST(AbsolutePath, ResolvesARelativePathAgainstTheWorkingDirectory)
{
    const TemporaryDirectory directory;
    const ScopedWorkingDirectory inside(directory.path());
    EXPECT_EQ(absolutePath("-clip.mp4"), std::filesystem::current_path() / "-clip.mp4");
    EXPECT_EQ(absolutePath("/a/clip.mp4"), "/a/clip.mp4");
}

TEST(AbsolutePath, ThrowsWhenTheWorkingDirectoryIsGone)
{
    const TemporaryDirectory directory;
    const auto folder = directory / "gone";
    std::filesystem::create_directory(folder);
    const ScopedWorkingDirectory inside(folder);
    std::filesystem::remove(folder);
    EXPECT_EQ(absolutePath("/a/clip.mp4"), "/a/clip.mp4");
    try {
        absolutePath("clip.mp4");
        FAIL() << "no error";
    } catch (const CliError& error) {
        EXPECT_STREQ(error.what(),
                     "“clip.mp4” cannot be found from here, as this folder is gone. Change to another one.");
    }
}

} // namespace stackreel
