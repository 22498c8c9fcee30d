#include "player/source/Orientation.h"

#include "player/source/TrackOrientation.h"
#include "tests/player/MarkedClip.h"
#include "tests/player/Quarters.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>

namespace stackreel
{

namespace
{

/// The picture with the rows "abc" and "def", with the orientation applied.
std::string oriented(Orientation orientation)
{
    const std::array<std::uint8_t, 8> stored = {'a', 'b', 'c', '.', 'd', 'e', 'f', '.'};
    const int columns = orientation.swapsSides() ? 2 : 3;
    const int rows = orientation.swapsSides() ? 3 : 2;
    std::array<std::uint8_t, 15> upright{};
    orientPlane({stored.data(), 4, 3, 2}, orientation, upright.data(), 5);
    std::string text;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column)
            text += static_cast<char>(upright.at(static_cast<std::size_t>(row * 5 + column)));
        text += '/';
    }
    return text;
}

} // namespace

TEST(Orientation, ReadsTheTagAndAppliesIt)
{
    const struct {
        const char* tag;
        Orientation orientation;
        const char* picture;
    } rows[] = {
        {"rotate-0", {0, false}, "abc/def/"},
        {"rotate-90", {1, false}, "da/eb/fc/"},
        {"rotate-180", {2, false}, "fed/cba/"},
        {"rotate-270", {3, false}, "cf/be/ad/"},
        {"flip-rotate-0", {0, true}, "cba/fed/"},
        {"flip-rotate-90", {1, true}, "fc/eb/da/"},
        {"flip-rotate-180", {2, true}, "def/abc/"},
        {"flip-rotate-270", {3, true}, "ad/be/cf/"},
        {"", {0, false}, "abc/def/"},
        {"rotate-45", {0, false}, "abc/def/"},
        {"flip-", {0, false}, "abc/def/"},
        {"flip-sideways", {0, false}, "abc/def/"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(orientationFromTag(row.tag), row.orientation) << row.tag;
        EXPECT_EQ(oriented(row.orientation), row.picture) << row.tag;
    }
}

TEST(TrackOrientation, IsIdentityForFilesWithoutAReadableMatrix)
{
    const auto clip = rotatedCopy(quartersClip.file(), "quarters-overlooked.mp4", {0, -1, -1, 0});
    ASSERT_EQ(ignoredOrientation(clip), (Orientation{1, true}));
    const auto size = std::filesystem::file_size(clip);
    const std::string endlessBoxes("\0\0\0\0moov", 8);
    const std::filesystem::path files[] = {
        quartersClip.file(),
        rotatedCopy(clip, "quarters-oriented-back.mp4", {0, 1, 1, 0}),
        truncatedCopy(clip, "quarters-truncated.mp4", size / 2),
        plainFile("no-boxes.mp4", ""),
        plainFile("words.mp4", "no film at all, only words and words and words"),
        plainFile("zeroes.mp4", std::string(100'000, '\0')),
        plainFile("endless-boxes.mp4", endlessBoxes + endlessBoxes + endlessBoxes),
        "/missing/file.mp4",
        "/tmp",
    };
    for (const auto& file : files)
        EXPECT_EQ(ignoredOrientation(file), Orientation()) << file;
}

} // namespace stackreel
