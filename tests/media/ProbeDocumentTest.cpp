#include "media/ProbeDocument.h"

#include <gtest/gtest.h>

#include <limits>

namespace stackreel
{

namespace
{

using namespace std::string_literals;

/// The description of the error with which decoding fails; empty when it succeeds.
std::string errorOf(std::string_view json)
{
    try {
        ProbeDocument::decode(json);
    } catch (const DecodingError& error) {
        return error.what();
    }
    return {};
}

/// A report with one stream. `content` is all JSON keys of the stream.
std::string oneStream(const std::string& content)
{
    return R"({"streams": [{)" + content + "}]}";
}

ProbeStream streamWith(const std::string& content)
{
    return ProbeDocument::decode(oneStream(content)).streams.at(0);
}

std::string nested(char open, char close, int depth)
{
    return std::string(static_cast<std::size_t>(depth), open) +
           std::string(static_cast<std::size_t>(depth), close);
}

} // namespace

TEST(DecodingAReport, ReadsKnownKeysAndIgnoresOthers)
{
    const auto document = ProbeDocument::decode(R"({
        "programs": [], "streams": [
            {"index": 0, "codec_type": "video", "codec_name": "h264", "width": 1920, "height": 1080,
             "duration": "12.500000", "tags": {"rotate": "90", "language": "und"}, "disposition": {"default": 1},
             "side_data_list": [{"side_data_type": "Display Matrix", "displaymatrix": "\n0", "rotation": -90}, {}]},
            {"codec_type": "audio", "sample_rate": "48000"}],
        "format": {"filename": "x", "nb_streams": 2, "duration": "12.6"}})");
    ASSERT_EQ(document.streams.size(), 2U);
    const ProbeStream& video = document.streams[0];
    EXPECT_EQ(video.codecType, "video");
    EXPECT_EQ(video.codecName, "h264");
    EXPECT_EQ(video.width, 1920);
    EXPECT_EQ(video.height, 1080);
    EXPECT_EQ(video.duration, "12.500000");
    EXPECT_EQ(video.tags, (std::map<std::string, std::string>{{"language", "und"}, {"rotate", "90"}}));
    ASSERT_EQ(video.sideDataList.value().size(), 2U);
    EXPECT_EQ(video.sideDataList->at(0).rotation, -90);
    EXPECT_EQ(video.sideDataList->at(1).rotation, std::nullopt);
    EXPECT_EQ(document.streams[1].codecType, "audio");
    EXPECT_EQ(document.format.value().duration, "12.6");
}

TEST(DecodingAReport, HasNoValueForAnAbsentOrNullKey)
{
    for (const std::string content :
         {"", R"("codec_type": null, "codec_name": null, "width": null, "height": null, "duration": null,
                 "tags": null, "side_data_list": null)"}) {
        const ProbeStream stream = streamWith(content);
        EXPECT_EQ(stream.codecType, std::nullopt);
        EXPECT_EQ(stream.codecName, std::nullopt);
        EXPECT_EQ(stream.width, std::nullopt);
        EXPECT_EQ(stream.height, std::nullopt);
        EXPECT_EQ(stream.duration, std::nullopt);
        EXPECT_EQ(stream.tags, std::nullopt);
        EXPECT_FALSE(stream.sideDataList.has_value());
    }
    EXPECT_FALSE(ProbeDocument::decode(R"({"streams": []})").format.has_value());
    EXPECT_FALSE(ProbeDocument::decode(R"({"streams": [], "format": null})").format.has_value());
    EXPECT_EQ(ProbeDocument::decode(R"({"streams": [], "format": {}})").format.value().duration,
              std::nullopt);
}

TEST(DecodingAReport, RejectsInvalidJson)
{
    const std::string refusal = "The video details could not be read: the report is not valid JSON.";
    for (const std::string& text : {""s,
                                    " "s,
                                    "\n"s,
                                    "{"s,
                                    R"({"streams": [)"s,
                                    R"({"streams": []} x)"s,
                                    R"({"streams": []}{})"s,
                                    R"({"streams": [],})"s,
                                    R"({streams: []})"s,
                                    R"({'streams': []})"s,
                                    R"({"streams": [NaN]})"s,
                                    R"({"streams": [{"width": NaN}]})"s,
                                    R"({"streams": [{"width": Infinity}]})"s,
                                    R"({"streams": [{"width": 01}]})"s,
                                    R"({"streams": [{"width": 0x10}]})"s,
                                    R"({"streams": [{"width": +1}]})"s,
                                    R"({"streams": [{"width": 1e999}]})"s,
                                    "{\"streams\": [{\"codec_name\": \"\xFF\"}]}"s,
                                    "{\"streams\": [{\"codec_name\": \"\xC0\xAF\"}]}"s,
                                    "{\"streams\": [{\"codec_name\": \"\xED\xA0\x80\"}]}"s,
                                    R"({"streams": [{"codec_name": "\ud800"}]})"s,
                                    "{\"streams\": [{\"codec_name\": \"a\nb\"}]}"s,
                                    "{\"streams\": []}\0"s,
                                    "\0"s,
                                    "\xFF\xFE{}"s,
                                    "ffprobe: command not found\n"s})
        EXPECT_EQ(errorOf(text), refusal) << testing::PrintToString(text);
}

TEST(DecodingAReport, RejectsATruncatedReport)
{
    const std::string whole =
        R"({"streams":[{"codec_type":"video","width":19,"tags":{"a":"b"},"side_data_list":[{"rotation":-90}]}],"format":{"duration":"1.0"}})";
    ASSERT_EQ(errorOf(whole), "");
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_NE(errorOf(std::string_view(whole).substr(0, length)), "") << length;
}

TEST(DecodingAReport, NamesThePathOfAValueOfTheWrongType)
{
    struct Row {
        std::string json;
        std::string message;
    };
    const Row rows[] = {
        {"[]", "the report is not an object"},
        {"null", "the report is not an object"},
        {"5", "the report is not an object"},
        {R"("streams")", "the report is not an object"},
        {"{}", "“streams” is missing"},
        {R"({"Streams": []})", "“streams” is missing"},
        {R"({"streams": null})", "streams is not a list"},
        {R"({"streams": {}})", "streams is not a list"},
        {R"({"streams": "video"})", "streams is not a list"},
        {R"({"streams": [null]})", "streams[0] is not an object"},
        {R"({"streams": [{}, []]})", "streams[1] is not an object"},
        {R"({"streams": [], "format": []})", "format is not an object"},
        {R"({"streams": [], "format": "mp4"})", "format is not an object"},
        {R"({"streams": [], "format": {"duration": 12.5}})", "format.duration is not a text"},
        {oneStream(R"("codec_type": 1)"), "streams[0].codec_type is not a text"},
        {oneStream(R"("codec_name": false)"), "streams[0].codec_name is not a text"},
        {oneStream(R"("codec_name": ["h264"])"), "streams[0].codec_name is not a text"},
        {oneStream(R"("duration": 12.5)"), "streams[0].duration is not a text"},
        {oneStream(R"("duration": {})"), "streams[0].duration is not a text"},
        {oneStream(R"("width": "1920")"), "streams[0].width is not a whole number"},
        {oneStream(R"("width": 1920.5)"), "streams[0].width is not a whole number"},
        {oneStream(R"("width": true)"), "streams[0].width is not a whole number"},
        {oneStream(R"("width": [])"), "streams[0].width is not a whole number"},
        {oneStream(R"("height": 1e300)"), "streams[0].height is not a whole number"},
        {oneStream(R"("height": 9223372036854775808.0)"), "streams[0].height is not a whole number"},
        {oneStream(R"("height": 9223372036854775808)"), "streams[0].height is too large"},
        {oneStream(R"("height": 18446744073709551615)"), "streams[0].height is too large"},
        {oneStream(R"("height": 18446744073709551616)"), "streams[0].height is not a whole number"},
        {oneStream(R"("height": -9223372036854777856)"), "streams[0].height is not a whole number"},
        {oneStream(R"("tags": [])"), "streams[0].tags is not an object"},
        {oneStream(R"("tags": "rotate")"), "streams[0].tags is not an object"},
        {oneStream(R"("tags": {"rotate": 90})"), "streams[0].tags.rotate is not a text"},
        {oneStream(R"("tags": {"title": null})"), "streams[0].tags.title is not a text"},
        {oneStream(R"("side_data_list": {})"), "streams[0].side_data_list is not a list"},
        {oneStream(R"("side_data_list": [7])"), "streams[0].side_data_list[0] is not an object"},
        {oneStream(R"("side_data_list": [null])"), "streams[0].side_data_list[0] is not an object"},
        {oneStream(R"("side_data_list": [{}, {"rotation": "90"}])"),
         "streams[0].side_data_list[1].rotation is not a whole number"},
        {oneStream(R"("side_data_list": [{"rotation": 0.5}])"),
         "streams[0].side_data_list[0].rotation is not a whole number"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(errorOf(row.json), "The video details could not be read: " + row.message + ".") << row.json;
}

TEST(DecodingAReport, ChecksStreamsThatAreNotUsed)
{
    EXPECT_NE(
        errorOf(R"({"streams": [{"codec_type": "video", "width": 2, "height": 1}, {"codec_type": 5}]})"), "");
}

TEST(DecodingAReport, AcceptsWholeNumbersInAnyNotation)
{
    struct Row {
        const char* text;
        std::int64_t expected;
    };
    const Row rows[] = {
        {"1920", 1920},
        {"1920.0", 1920},
        {"1.92e3", 1920},
        {"192000e-2", 1920},
        {"-90", -90},
        {"-0", 0},
        {"-0.0", 0},
        {"9223372036854775807", std::numeric_limits<std::int64_t>::max()},
        {"-9223372036854775808", std::numeric_limits<std::int64_t>::min()},
        {"-9223372036854775808.0", std::numeric_limits<std::int64_t>::min()},
        {"9007199254740993", 9007199254740993},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(streamWith(std::string("\"width\": ") + row.text).width, row.expected) << row.text;
        EXPECT_EQ(streamWith(std::string("\"side_data_list\": [{\"rotation\": ") + row.text + "}]")
                      .sideDataList.value()
                      .at(0)
                      .rotation,
                  row.expected)
            << row.text;
    }
}

TEST(DecodingAReport, UsesTheLastOfDuplicateKeys)
{
    EXPECT_EQ(streamWith(R"("width": 1, "width": 2)").width, 2);
    EXPECT_EQ(streamWith(R"("tags": {"rotate": "90", "rotate": "180"})").tags->at("rotate"), "180");
}

TEST(DecodingAReport, KeepsAnyText)
{
    EXPECT_EQ(streamWith(R"("codec_name": "")").codecName, "");
    EXPECT_EQ(streamWith(R"("codec_name": "\u0000x\ud83c\udfac")").codecName, "\0x🎬"s);
    EXPECT_EQ(streamWith(R"("tags": {"": "empty", "東京": "\"q\""})").tags,
              (std::map<std::string, std::string>{{"", "empty"}, {"東京", "\"q\""}}));
}

TEST(DecodingAReport, AcceptsAByteOrderMarkAndSpaceAround)
{
    EXPECT_EQ(errorOf("\xEF\xBB\xBF{\"streams\": []}"), "");
    EXPECT_EQ(errorOf("\r\n\t {\"streams\": []} \n"), "");
}

TEST(DecodingAReport, HandlesDeepNesting)
{
    constexpr int depth = 100'000;
    EXPECT_EQ(errorOf(R"({"streams": [], "other": )" + nested('[', ']', depth) + "}"), "");
    EXPECT_NE(errorOf(R"({"streams": )" + nested('[', ']', depth) + "}"), "");
    EXPECT_NE(errorOf(nested('[', ']', depth)), "");
    EXPECT_NE(errorOf(std::string(depth, '[')), "");
    std::string objects;
    for (int level = 0; level < depth; ++level)
        objects += R"({"tags":)";
    EXPECT_NE(errorOf(objects), "");
    EXPECT_EQ(errorOf(R"({"streams": [], "other": )" + objects + "1" + std::string(depth, '}') + "}"), "");
}

TEST(DecodingAReport, HandlesManyStreams)
{
    std::string json = R"({"streams": [{"codec_type": "data"})";
    for (int stream = 1; stream < 100'000; ++stream)
        json += R"(,{"codec_type":"data"})";
    EXPECT_EQ(ProbeDocument::decode(json + "]}").streams.size(), 100'000U);
}

} // namespace stackreel
