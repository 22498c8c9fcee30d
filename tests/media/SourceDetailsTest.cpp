#include "media/SourceDetails.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

SourceDetails detailsIn(const std::string& streams)
{
    return SourceDetails::of(ProbeDocument::decode(R"({"streams": [)" + streams + "]}"));
}

SourceDetails detailsOfVideo(const std::string& values)
{
    return detailsIn(R"({"codec_type": "video")" + (values.empty() ? "" : ", " + values) + "}");
}

} // namespace

TEST(SourceDetails, HaveTheColourTagsThatThePictureStates)
{
    EXPECT_EQ(
        detailsOfVideo(R"("color_space": "bt2020nc", "color_primaries": "bt2020",
                                "color_transfer": "arib-std-b67", "color_range": "tv")")
            .colour,
        (ColourTags{.matrix = "bt2020nc", .primaries = "bt2020", .transfer = "arib-std-b67", .range = "tv"}));
    EXPECT_EQ(detailsOfVideo(R"("color_space": "unknown", "color_range": 7)").colour, ColourTags());
    EXPECT_EQ(detailsIn("").colour, ColourTags());
}

TEST(SourceDetails, HaveTheAverageFrameRateWhereItIsStated)
{
    EXPECT_EQ(detailsOfVideo(R"("avg_frame_rate": "25/1")").frameRate, 25);
    EXPECT_DOUBLE_EQ(detailsOfVideo(R"("avg_frame_rate": "30000/1001")").frameRate.value_or(0),
                     30000 / 1001.0);
    for (const std::string value :
         {R"("0/0")", R"("25")", R"("1/0")", R"("0/1")", R"("-25/1")", R"("/")", "25"})
        EXPECT_EQ(detailsOfVideo(R"("avg_frame_rate": )" + value).frameRate, std::nullopt) << value;
    EXPECT_EQ(detailsOfVideo("").frameRate, std::nullopt);
}

TEST(DecodingAReport, HasTheCommentOfTheFormatWhereItIsAText)
{
    const auto commentIn = [](const std::string& tags) {
        return ProbeDocument::decode(R"({"streams": [], "format": {"tags": )" + tags + "}}").format->comment;
    };
    EXPECT_EQ(commentIn(R"({"comment": "{\"a\": 1}", "title": 7})"), R"({"a": 1})");
    for (const char* tags : {"{}", "null", "7", "[]", R"({"comment": null})", R"({"comment": ["a"]})"})
        EXPECT_EQ(commentIn(tags), std::nullopt) << tags;
}

TEST(SourceDetails, ListTheSoundStreamsInTheirOrder)
{
    const auto tracks = detailsIn(R"({"codec_type": "audio", "codec_name": "aac", "channels": 6,
            "channel_layout": "5.1", "tags": {"language": "deu", "title": "Ton"}},
        {"codec_type": "video"}, {"codec_type": "audio", "channels": "two", "channel_layout": "unknown",
         "tags": {"language": "und"}})")
                            .audioTracks;
    ASSERT_EQ(tracks.size(), 2U);
    EXPECT_EQ(
        tracks[0],
        (AudioTrack{.codec = "aac", .channels = 6, .layout = "5.1", .language = "deu", .title = "Ton"}));
    EXPECT_EQ(tracks[1], AudioTrack());
}

} // namespace stackreel
