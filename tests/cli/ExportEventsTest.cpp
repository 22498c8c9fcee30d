#include "cli/ExportEvents.h"

#include "cli/CliError.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace stackreel
{

namespace
{

using Json = nlohmann::json;

const ExportFacts facts = {
    .source = "/a b/\"é\".mov", .file = "/out.mp4", .size = {.width = 1080, .height = 1920}, .seconds = 2.5};

/// The object in a text that has to be a single line.
Json objectIn(const std::string& text)
{
    EXPECT_TRUE(text.ends_with("}\n")) << text;
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1) << text;
    return Json::parse(text);
}

TEST(ExportEvents, StartedNamesTheFilesAndTheOutput)
{
    EXPECT_EQ(objectIn(ExportEvents::started(facts)), Json::parse(R"({"event": "started",
        "source": "/a b/\"é\".mov", "file": "/out.mp4", "width": 1080, "height": 1920, "seconds": 2.5})"));
}

TEST(ExportEvents, StartedRefusesANameThatIsNotUtf8)
{
    ExportFacts invalid = facts;
    invalid.file = "/\xff.mp4";
    EXPECT_THROW(ExportEvents::started(invalid), CliError);
}

TEST(ExportEvents, ProgressHasNullForWhatIsUnknown)
{
    EXPECT_EQ(objectIn(ExportEvents::progress("/a.mov", {.percent = 42, .speed = 1.5, .secondsLeft = 3.25})),
              Json::parse(R"({"event": "progress", "source": "/a.mov", "percent": 42, "speed": 1.5,
                              "secondsLeft": 3.25})"));
    EXPECT_EQ(objectIn(ExportEvents::progress("/a.mov", Progress())),
              Json::parse(R"({"event": "progress", "source": "/a.mov", "percent": 0, "speed": null,
                              "secondsLeft": null})"));
}

TEST(ExportEvents, FinishedHasTheResultAndWhatTheFrontChanged)
{
    const ExportResult result = {.bytes = 1234,
                                 .seconds = 2.48,
                                 .elapsedSeconds = 0.5,
                                 .changes = {{.name = "chroma", .value = "full", .reason = "odd"},
                                             {.name = "encoder", .value = "libx264", .reason = "missing"}}};
    EXPECT_EQ(objectIn(ExportEvents::finished(facts, result)), Json::parse(R"({"event": "finished",
        "source": "/a b/\"é\".mov", "file": "/out.mp4", "bytes": 1234, "width": 1080, "height": 1920,
        "seconds": 2.48, "elapsedSeconds": 0.5, "encoder": "libx264", "changes": [
            {"name": "chroma", "value": "full", "reason": "odd"},
            {"name": "encoder", "value": "libx264", "reason": "missing"}]})"));
}

TEST(ExportEvents, FinishedNamesTheRequestedEncoderWithoutAReportOfTheFront)
{
    const Json object = objectIn(ExportEvents::finished(facts, {}));
    EXPECT_EQ(object.at("encoder"), "h264_videotoolbox");
    EXPECT_TRUE(object.at("changes").empty());
    EXPECT_TRUE(object.at("bytes").is_null());
}

TEST(ExportEvents, FailedHasTheToolsLinesAndReplacesInvalidBytes)
{
    const Failure failure = {
        .code = "tool-failed", .sentence = "“\xff” failed.", .toolLines = "one\n\"two\"", .hint = ""};
    EXPECT_EQ(objectIn(ExportEvents::failed("/a.mov", failure)), Json::parse(R"({"event": "failed",
        "source": "/a.mov", "code": "tool-failed", "message": "“\ufffd” failed.",
        "toolLines": ["one", "\"two\""]})"));
}

TEST(ExportEvents, FailedHasNoSourceWhereNoneOfSeveralExportsHasBegun)
{
    EXPECT_TRUE(objectIn(ExportEvents::failed(std::nullopt, Failure())).at("source").is_null());
}

TEST(ExportEvents, SummaryCountsTheExports)
{
    EXPECT_EQ(objectIn(ExportEvents::summary({.saved = 2, .failed = 1, .notStarted = 3})),
              Json::parse(R"({"event": "summary", "saved": 2, "failed": 1, "notStarted": 3})"));
}

} // namespace

} // namespace stackreel
