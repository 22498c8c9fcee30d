#include "model/SourceFacts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace stackreel
{

namespace
{

TEST(SourceFacts, DurationIsMinutesAndSecondsRoundedHalfUp)
{
    const std::vector<std::pair<double, std::string>> rows = {
        {59.5, "1:00"},  {61.4, "1:01"},   {3725, "62:05"},       {0.4, "0:00"},
        {0.5, "0:01"},   {9.49, "0:09"},   {9.5, "0:10"},         {599.5, "10:00"},
        {3600, "60:00"}, {1e-300, "0:00"}, {6e9, "100000000:00"},
    };
    for (const auto& [seconds, text] : rows)
        EXPECT_EQ(SourceFacts::duration(seconds), text) << seconds;
}

TEST(SourceFacts, DurationIsUnknownUnlessPositiveAndFinite)
{
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double seconds : {0.0, -0.0, -1.0, std::nan(""), infinity, -infinity})
        EXPECT_EQ(SourceFacts::duration(seconds), "Unknown") << seconds;
}

TEST(SourceFacts, TheLongestDurationIsStillANumber)
{
    const std::string text = SourceFacts::duration(std::numeric_limits<double>::max());
    EXPECT_EQ(text.find_first_not_of("0123456789:"), std::string::npos) << text;
}

TEST(SourceFacts, FrameIsTheDisplayedSize)
{
    MediaInfo media = {.width = 1080,
                       .height = 1920,
                       .rotation = 0,
                       .duration = 1,
                       .videoCodec = "h264",
                       .audioCodec = std::nullopt};
    for (const std::int64_t rotation : {90, -90, 270, -270})
        EXPECT_EQ((media.rotation = rotation, SourceFacts::frame(media)), "1920 × 1080") << rotation;
    for (const std::int64_t rotation : {0, 180, -180, 45})
        EXPECT_EQ((media.rotation = rotation, SourceFacts::frame(media)), "1080 × 1920") << rotation;
}

TEST(SourceFacts, CodecsAreInUpperCaseLetters)
{
    EXPECT_EQ(SourceFacts::upperCase("mpeg2video"), "MPEG2VIDEO");
    EXPECT_EQ(SourceFacts::upperCase("é"), "é");
    EXPECT_EQ(SourceFacts::upperCase(""), "");
}

} // namespace

} // namespace stackreel
