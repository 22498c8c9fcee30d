#include "ffmpeg-shim/FileIdentity.h"

#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace stackreel::shim
{

TEST(FileIdentity, IsTheSameForLinksToAFileAndNotForCopies)
{
    const TemporaryDirectory folder;
    const std::filesystem::path file = folder.write("file", "same");
    const std::filesystem::path copy = folder.write("copy", "same");
    std::filesystem::create_hard_link(file, folder / "hard");
    std::filesystem::create_symlink(file, folder / "soft");
    const auto identity = identityOf(file.string());
    ASSERT_TRUE(identity);
    EXPECT_EQ(identityOf((folder / "hard").string()), identity);
    EXPECT_EQ(identityOf((folder / "soft").string()), identity);
    EXPECT_NE(identityOf(copy.string()), identity);
}

TEST(FileIdentity, IsNoneForAFileThatDoesNotExist)
{
    const TemporaryDirectory folder;
    std::filesystem::create_symlink(folder / "nowhere", folder / "dangling");
    EXPECT_EQ(identityOf((folder / "nowhere").string()), std::nullopt);
    EXPECT_EQ(identityOf((folder / "dangling").string()), std::nullopt);
    EXPECT_EQ(identityOf(""), std::nullopt);
}

TEST(FileIdentity, IsReadBackFromItsText)
{
    const std::vector<FileIdentity> identities{{1, 2}, {0, 0}, {UINT64_MAX, UINT64_MAX}};
    EXPECT_EQ(identitiesText(identities), "1:2,0:0,18446744073709551615:18446744073709551615");
    EXPECT_EQ(identitiesFromText(identitiesText(identities)), identities);
    EXPECT_EQ(identitiesText({}), "");
}

TEST(FileIdentity, IgnoresTextsOfAnotherForm)
{
    struct Row {
        const char* text;
        std::vector<FileIdentity> expected;
    };
    const Row rows[] = {
        {"", {}},
        {",", {}},
        {"1", {}},
        {":", {}},
        {"1:", {}},
        {":2", {}},
        {"1:2:3", {}},
        {"-1:2", {}},
        {" 1:2", {}},
        {"1:2 ", {}},
        {"0x1:2", {}},
        {"18446744073709551616:1", {}},
        {"garbage,1:2,,3:x,4:5", {{1, 2}, {4, 5}}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(identitiesFromText(row.text), row.expected) << '"' << row.text << '"';
}

} // namespace stackreel::shim
