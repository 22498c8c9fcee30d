#include "model/SourceContent.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

ProbeDocument sourceWith(const std::vector<std::string>& types)
{
    ProbeDocument source;
    for (const std::string& type : types)
        source.streams.emplace_back().codecType = type;
    return source;
}

const ProbeDocument usual = sourceWith({"video", "audio", "video", "audio"});

TEST(SourceContent, FindsTheEndsOfThePictureAndOfAllStreams)
{
    const std::string packets = "packet,0,0.000000,0.000000,0.040000\npacket,1,0.000000,0.000000,0.023000\n"
                                "packet,0,2.960000,2.960000,0.040000\npacket,1,3.000000,3.000000,0."
                                "023000\npacket,1,5.977000,5.977000,0."
                                "023000\nformat,0.000000\n";
    EXPECT_EQ(SourceContent::parse(packets, usual, 0, 6),
              (SourceContent{.pictureEnd = 3, .end = 6, .hasSound = true}));
}

TEST(SourceContent, CountsTimesFromTheStartOfTheSource)
{
    const std::string packets =
        "packet,0,1.400000,1.400000,0.500000\npacket,1,2.000000,2.000000,0.500000,\nformat,1.400000\n";
    const auto content = SourceContent::parse(packets, usual, 0, 6);
    EXPECT_DOUBLE_EQ(content.pictureEnd, 0.5);
    EXPECT_DOUBLE_EQ(content.end, 1.1);
    EXPECT_DOUBLE_EQ(content.start, 1.4);
}

TEST(SourceContent, TakesTheFirstStreamOfEachKindOnly)
{
    const auto content = SourceContent::parse("packet,2,4,4,1\npacket,3,4,4,1\n", usual, 0, 6);
    EXPECT_EQ(content, (SourceContent{.pictureEnd = 0, .end = 5, .hasSound = false}));
    EXPECT_FALSE(SourceContent::parse("packet,0,4,4,1\n", sourceWith({"data"}), 0, 6).hasSound);
}

TEST(SourceContent, LooksForTheSoundOfTheChosenTrack)
{
    const std::string packets = "packet,0,4,4,1\npacket,3,4,4,1\n";
    EXPECT_FALSE(SourceContent::parse(packets, usual, 0, 6, 0).hasSound);
    EXPECT_TRUE(SourceContent::parse(packets, usual, 0, 6, 1).hasSound);
    EXPECT_FALSE(SourceContent::parse(packets, usual, 0, 6, 2).hasSound);
}

TEST(SourceContent, HasSoundOnlyWhereAPacketLiesInTheRange)
{
    const auto hasSound = [](const std::string& time) {
        return SourceContent::parse("packet,1," + time + "," + time + ",0.02\n", usual, 3, 6).hasSound;
    };
    EXPECT_FALSE(hasSound("1.99"));
    EXPECT_FALSE(hasSound("3.05")) << "too near to the start to be sure";
    EXPECT_TRUE(hasSound("3.2"));
    EXPECT_TRUE(hasSound("5.8"));
    EXPECT_FALSE(hasSound("6.2"));
}

TEST(SourceContent, TakesTheTimeOfDecodingWhereThereIsNoneOfPresentation)
{
    EXPECT_EQ(SourceContent::parse("packet,0,N/A,2.96,0.04\npacket,1,N/A,5.5,0.5\n", usual, 0, 6),
              (SourceContent{.pictureEnd = 3, .end = 6, .hasSound = true}));
}

TEST(SourceContent, SkipsWhatItDoesNotUnderstand)
{
    EXPECT_EQ(
        SourceContent::parse(
            "packet,0,N/A,N/A,0.04\npacket,x,1,1,1\nside_data,\n\npacket,0,1,1,N/A\nformat,N/A", usual, 0, 6),
        (SourceContent{.pictureEnd = 1, .end = 1, .hasSound = false}));
}

} // namespace

} // namespace stackreel
