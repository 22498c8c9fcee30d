#include "tests/cli/CliInstallation.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <csignal>
#include <sstream>

namespace stackreel
{

namespace
{

using Json = nlohmann::json;

/// The objects in a text that has one on each line.
std::vector<Json> objectsIn(const std::string& text)
{
    std::vector<Json> objects;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        objects.push_back(Json::parse(line));
    return objects;
}

std::vector<std::string> eventsIn(const std::string& text)
{
    std::vector<std::string> events;
    for (const Json& object : objectsIn(text))
        events.push_back(object.at("event"));
    return events;
}

using Events = std::vector<std::string>;

class JsonExport : public testing::Test
{
protected:
    CliResult run(const std::vector<std::string>& more = {}) const
    {
        std::vector<std::string> arguments = {"export", "clip.mov", "out.mp4", "--json"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return m_cli.run(arguments);
    }

    CliInstallation m_cli;
};

TEST_F(JsonExport, PrintsALineForTheStartAndTheResultAndNothingElse)
{
    const CliResult result = run();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    const auto objects = objectsIn(result.output);
    ASSERT_EQ(objects.size(), 2U) << result.output;
    EXPECT_EQ(objects[0], (Json{{"event", "started"},
                                {"source", (m_cli.folder() / "clip.mov").string()},
                                {"file", (m_cli.folder() / "out.mp4").string()},
                                {"width", 1080},
                                {"height", 1920},
                                {"seconds", 10.0}}));
    EXPECT_EQ(objects[1].at("event"), "finished");
    EXPECT_EQ(objects[1].at("file"), (m_cli.folder() / "out.mp4").string());
    EXPECT_EQ(objects[1].at("bytes"), 8);
    EXPECT_EQ(objects[1].at("encoder"), "h264_videotoolbox");
}

TEST_F(JsonExport, ReportsTheProgressAndTheChangesOfTheFront)
{
    m_cli.setTool("ffmpeg",
                  "[ -z \"$STACKREEL_REPORT_CHANGES\" ] || echo '[stackreel] encoder=libx264: why' >&2; "
                  "echo 'frame=  100 time=00:00:04.20 speed=2.1x' >&2; printf rendered >\"$last\"");
    const auto objects = objectsIn(run().output);
    ASSERT_EQ(objects.size(), 3U);
    EXPECT_EQ(objects[1].at("event"), "progress");
    EXPECT_EQ(objects[1].at("percent"), 42);
    EXPECT_EQ(objects[1].at("speed"), 2.1);
    EXPECT_NEAR(objects[1].at("secondsLeft"), 5.8 / 2.1, 1e-9);
    EXPECT_EQ(objects[2].at("encoder"), "libx264");
    EXPECT_EQ(objects[2].at("changes"),
              Json::parse(R"([{"name": "encoder", "value": "libx264", "reason": "why"}])"));
    EXPECT_EQ(eventsIn(run({"--overwrite", "--quiet"}).output), (Events{"started", "finished"}));
}

TEST_F(JsonExport, WarnsOnStandardErrorOfColoursThatWereNotConverted)
{
    m_cli.setTool("ffmpeg", "echo '[stackreel] primaries=unconverted: why' >&2; printf rendered >\"$last\"");
    const CliResult result = run();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "Warning: out.mp4 keeps the primaries of its source: why.\n");
    EXPECT_EQ(objectsIn(result.output).back().at("changes"),
              Json::parse(R"([{"name": "primaries", "value": "unconverted", "reason": "why"}])"));
    const CliResult plain = m_cli.run({"export", "clip.mov", "plain.mp4", "--quiet"});
    EXPECT_EQ(plain.output, "Saved plain.mp4\n");
    EXPECT_EQ(plain.error, "Warning: plain.mp4 keeps the primaries of its source: why.\n");
}

TEST_F(JsonExport, ReportsAFailureWithTheToolsLastLines)
{
    m_cli.setTool("ffmpeg", "echo '[stackreel] encoder=libx264: why' >&2; "
                            "echo 'av_write_frame(): No space left on device' >&2; exit 1");
    const CliResult result = run();
    EXPECT_EQ(result.status, 1);
    const auto objects = objectsIn(result.output);
    ASSERT_EQ(objects.size(), 2U);
    EXPECT_EQ(objects[1], (Json{{"event", "failed"},
                                {"source", (m_cli.folder() / "clip.mov").string()},
                                {"code", "tool-failed"},
                                {"message", "FFmpeg could not process this video. The disk is full. Free "
                                            "some space and try again."},
                                {"toolLines", {"av_write_frame(): No space left on device"}}}));
    EXPECT_EQ(result.error, "FFmpeg could not process this video. The disk is full. Free some space and try "
                            "again.\nav_write_frame(): No space left on device\n");
}

TEST_F(JsonExport, ReportsAFailureBeforeTheStart)
{
    m_cli.setSourceReport(verticalReport);
    const auto objects = objectsIn(run().output);
    ASSERT_EQ(objects.size(), 1U);
    EXPECT_EQ(objects[0].at("code"), "vertical-source");
    EXPECT_EQ(eventsIn(m_cli.run({"export", "clip.mov", "out.mov", "--json"}).output), Events{"failed"});
}

TEST_F(JsonExport, ReportsACancellation)
{
    m_cli.setTool("ffmpeg", "printf half >\"$last\"; pause");
    RunningCli running = m_cli.start({"export", "clip.mov", "out.mp4", "--json"});
    m_cli.waitForPausedTool();
    running.signal(SIGTERM);
    const CliResult result = running.result();
    EXPECT_EQ(result.status, 143);
    const auto objects = objectsIn(result.output);
    ASSERT_EQ(objects.size(), 2U) << result.output;
    EXPECT_EQ(objects[1].at("code"), "cancelled");
    EXPECT_EQ(result.error, "Cancelled.\n");
    EXPECT_EQ(m_cli.names(), std::vector<std::string>{"clip.mov"});
}

TEST_F(JsonExport, RefusesANameThatIsNotUtf8BeforeRendering)
{
    m_cli.write("\xff.mov", "a clip");
    const CliResult result = m_cli.run({"export", "\xff.mov", "--json"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error, "A file name is not UTF-8, which JSON cannot carry. Leave --json out.\n");
    EXPECT_EQ(objectsIn(result.output).at(0).at("code"), "refused");
    EXPECT_TRUE(m_cli.encoderArguments().empty());
}

TEST_F(JsonExport, RendersNothingWhereTheStartCannotBeWritten)
{
    for (const char* output : {"/dev/full", "closed"}) {
        const CliResult result = m_cli.run({"export", "clip.mov", "out.mp4", "--json"}, {.output = output});
        EXPECT_EQ(result.status, 1) << output;
        EXPECT_TRUE(result.error.starts_with("Could not write to “standard output”: ")) << result.error;
        EXPECT_EQ(m_cli.names(), std::vector<std::string>{"clip.mov"});
    }
}

} // namespace

} // namespace stackreel
