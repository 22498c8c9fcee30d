#include "media/ScratchDirectory.h"

#include "tests/support/Descriptors.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fstream>
#include <optional>

namespace stackreel
{

namespace
{

class ScratchDirectoryTest : public testing::Test
{
protected:
    TemporaryDirectory m_directory;

private:
    ScopedEnvironment m_temporary{"TMPDIR", m_directory.path()};
};

} // namespace

TEST_F(ScratchDirectoryTest, IsRemovedWithItsContent)
{
    {
        ScratchDirectory scratch;
        std::ofstream(scratch.file("known")) << "content";
        std::ofstream(scratch.path() / "unknown") << "content";
        std::filesystem::create_directories(scratch.path() / "folder/below");
        EXPECT_EQ(m_directory.names().size(), 1U);
    }
    EXPECT_EQ(m_directory.names(), std::vector<std::string>());
}

TEST_F(ScratchDirectoryTest, KeepsTheTargetOfALinkInIt)
{
    const auto file = m_directory.write("elsewhere/file", "content");
    {
        const ScratchDirectory scratch;
        std::filesystem::create_directory_symlink(file.parent_path(), scratch.path() / "link");
    }
    EXPECT_EQ(m_directory.names(), std::vector<std::string>{"elsewhere"});
    EXPECT_EQ(contentOf(file), "content");
}

TEST_F(ScratchDirectoryTest, IsRemovedEvenWhenNoDescriptorIsLeft)
{
    auto scratch = std::make_optional<ScratchDirectory>();
    std::ofstream(scratch->file("stdout")) << "content";
    scratch->file("never made");
    {
        const ScopedDescriptorLimit none(0);
        scratch.reset();
    }
    EXPECT_EQ(m_directory.names(), std::vector<std::string>());
}

TEST_F(ScratchDirectoryTest, IgnoresThatItWasRemovedAlready)
{
    const ScratchDirectory scratch;
    std::filesystem::remove(scratch.path());
}

} // namespace stackreel
