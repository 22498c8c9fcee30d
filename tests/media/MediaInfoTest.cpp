#include "media/MediaInfo.h"

#include <gtest/gtest.h>

#include <limits>

namespace stackreel
{

TEST(MediaInfo, IsQuarterTurnedByOddMultiplesOf90Degrees)
{
    struct Row {
        std::int64_t rotation;
        bool quarterTurned;
    };
    const Row rows[] = {
        {0, false},
        {90, true},
        {-90, true},
        {180, false},
        {-180, false},
        {270, true},
        {-270, true},
        {360, false},
        {450, true},
        {89, false},
        {91, false},
        {45, false},
        {std::numeric_limits<std::int64_t>::min(), false},
        {std::numeric_limits<std::int64_t>::max(), false},
        {9223372036854775710, true},
        {-9223372036854775710, true},
    };
    for (const Row& row : rows) {
        MediaInfo info;
        info.width = 1920;
        info.height = 1080;
        info.rotation = row.rotation;
        EXPECT_EQ(info.isQuarterTurned(), row.quarterTurned) << row.rotation;
        EXPECT_EQ(info.displayedWidth(), row.quarterTurned ? 1080 : 1920) << row.rotation;
        EXPECT_EQ(info.displayedHeight(), row.quarterTurned ? 1920 : 1080) << row.rotation;
        EXPECT_EQ(info.displayAspect(), row.quarterTurned ? 1080.0 / 1920.0 : 1920.0 / 1080.0)
            << row.rotation;
    }
}

TEST(MediaInfo, ComparesAllItsFields)
{
    const MediaInfo info = {.width = 1920,
                            .height = 1080,
                            .rotation = 90,
                            .duration = 12.5,
                            .videoCodec = "h264",
                            .audioCodec = "aac"};
    EXPECT_EQ(info, MediaInfo(info));
    const auto differsBy = [&info](auto change) {
        MediaInfo other = info;
        change(other);
        return other != info;
    };
    EXPECT_TRUE(differsBy([](MediaInfo& other) { other.width = 1921; }));
    EXPECT_TRUE(differsBy([](MediaInfo& other) { other.height = 1079; }));
    EXPECT_TRUE(differsBy([](MediaInfo& other) { other.rotation = -90; }));
    EXPECT_TRUE(differsBy([](MediaInfo& other) { other.duration = 12.500001; }));
    EXPECT_TRUE(differsBy([](MediaInfo& other) { other.videoCodec = "hevc"; }));
    EXPECT_TRUE(differsBy([](MediaInfo& other) { other.audioCodec = std::nullopt; }));
}

} // namespace stackreel
