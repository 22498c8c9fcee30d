#include "cli/ArgumentsText.h"
#include "cli/CliError.h"
#include "cli/FactsText.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace stackreel
{

namespace
{

const MediaInfo rotated = {.width = 1080,
                           .height = 1920,
                           .rotation = -90,
                           .duration = 3724.6,
                           .videoCodec = "hevc",
                           .audioCodec = "aac"};

TEST(FactsText, LinesUseTheLabelsOfTheWindow)
{
    EXPECT_EQ(FactsText::lines(rotated, {}), "Frame   1920 × 1080\n"
                                             "Video   HEVC\n"
                                             "Length  62:05\n"
                                             "Audio   AAC\n");
    EXPECT_EQ(FactsText::lines({.width = 2,
                                .height = 1,
                                .rotation = 0,
                                .duration = 0,
                                .videoCodec = "unknown",
                                .audioCodec = std::nullopt},
                               {}),
              "Frame   2 × 1\n"
              "Video   UNKNOWN\n"
              "Length  Unknown\n");
}

TEST(FactsText, LinesListSeveralSoundTracksWithTheirNumbers)
{
    SourceDetails details;
    details.audioTracks = {{.codec = "aac", .channels = 2, .layout = {}, .language = "eng", .title = {}}};
    EXPECT_EQ(FactsText::lines(rotated, details), FactsText::lines(rotated, {}));
    details.audioTracks.push_back(
        {.codec = "ac3", .channels = 1, .layout = {}, .language = "und", .title = {}});
    details.audioTracks.push_back(
        {.codec = {}, .channels = {}, .layout = {}, .language = "\x1b[2J", .title = "\x1b[2J"});
    EXPECT_EQ(FactsText::lines(rotated, details), "Frame   1920 × 1080\n"
                                                  "Video   HEVC\n"
                                                  "Length  62:05\n"
                                                  "Audio 1 AAC, 2 channels, eng\n"
                                                  "Audio 2 AC3, 1 channel\n"
                                                  "Audio 3 UNKNOWN\n");
}

TEST(FactsText, JsonHasTheProbedValues)
{
    const SourceDetails details = {
        .frameRate = 29.5,
        .colour = {.matrix = "bt709", .primaries = {}, .transfer = {}, .range = "tv"},
        .audioTracks = {{.codec = "aac", .channels = 2, .layout = "stereo", .language = "eng", .title = {}}}};
    EXPECT_EQ(FactsText::json(rotated, details), R"({
  "width": 1080,
  "height": 1920,
  "rotation": -90,
  "duration": 3724.6,
  "videoCodec": "hevc",
  "audioCodec": "aac",
  "displayAspect": 1.7777777777777777,
  "frameRate": 29.5,
  "colour": {
    "matrix": "bt709",
    "primaries": null,
    "transfer": null,
    "range": "tv"
  },
  "audioTracks": [
    {
      "number": 1,
      "codec": "aac",
      "channels": 2,
      "layout": "stereo",
      "language": "eng",
      "title": null
    }
  ]
}
)");
}

TEST(FactsText, JsonHasNullForMissingValues)
{
    MediaInfo media = rotated;
    media.audioCodec.reset();
    media.width = 0;
    media.rotation = 90;
    const auto object = nlohmann::json::parse(FactsText::json(media, {}));
    EXPECT_EQ(object.size(), 10U);
    EXPECT_TRUE(object.at("audioCodec").is_null());
    EXPECT_TRUE(object.at("frameRate").is_null());
    EXPECT_TRUE(object.at("colour").at("matrix").is_null());
    EXPECT_TRUE(object.at("audioTracks").empty());
    EXPECT_TRUE(object.at("displayAspect").is_null());
}

TEST(ArgumentsText, LinesKeepEachArgumentUnchanged)
{
    EXPECT_EQ(ArgumentsText::lines({"-i", "a \"b\" \\ \xff", ""}), "-i\na \"b\" \\ \xff\n\n");
    EXPECT_EQ(ArgumentsText::lines({}), "");
}

TEST(ArgumentsText, JsonKeepsEveryNameInUtf8)
{
    const std::vector<std::string> arguments = {"-i", "/a b/\"東京\"\n\t%\\é.mov", ""};
    EXPECT_EQ(nlohmann::json::parse(ArgumentsText::json(arguments)), nlohmann::json(arguments));
}

TEST(ArgumentsText, JsonThrowsForANameThatIsNotUtf8)
{
    EXPECT_THROW(ArgumentsText::json({"\xff.mov"}), CliError);
}

} // namespace

} // namespace stackreel
