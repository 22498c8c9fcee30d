#include "tests/cli/CliInstallation.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <csignal>
#include <sstream>

namespace stackreel
{

namespace
{

namespace fs = std::filesystem;
using Json = nlohmann::json;
using Words = std::vector<std::string>;

/// Fails for sources named "bad…".
const char* const pickyEncoder = "case \"$*\" in */bad*) echo 'bad data' >&2; exit 1 ;; esac; "
                                 "printf rendered >\"$last\"";

class ExportMany : public testing::Test
{
protected:
    ExportMany()
    {
        for (const char* name : {"a.mov", "bad.mov", "c.mov"})
            m_cli.write(name, "a clip");
        fs::create_directory(m_cli.folder() / "out");
        m_cli.setTool("ffmpeg", pickyEncoder);
    }

    Words exported() const
    {
        Words names;
        for (const auto& entry : fs::directory_iterator(m_cli.folder() / "out"))
            names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }
    std::string quoted(const fs::path& name) const { return "“" + (m_cli.folder() / name).string() + "”"; }

    CliInstallation m_cli;
};

TEST_F(ExportMany, ExportsOneAfterTheOtherWithTheSameOptions)
{
    const CliResult result = m_cli.run({"export", "a.mov", "c.mov", "--into", "out", "--overwrite"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.output, "Saved a-vertical.mp4\nSaved c-vertical.mp4\nSaved all 2 videos.\n");
    EXPECT_EQ(exported(), (Words{"a-vertical.mp4", "c-vertical.mp4"}));
}

TEST_F(ExportMany, GoesOnAfterAFailureAndFailsInTheEnd)
{
    const CliResult result = m_cli.run({"export", "a.mov", "bad.mov", "c.mov", "--into", "out"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "Saved a-vertical.mp4\nSaved c-vertical.mp4\n");
    EXPECT_TRUE(result.error.starts_with("“bad.mov”: FFmpeg could not process this video. ")) << result.error;
    EXPECT_NE(result.error.find("\nbad data\n"), std::string::npos) << result.error;
    EXPECT_TRUE(result.error.ends_with("1 of 3 exports failed: “bad.mov”.\n")) << result.error;
    EXPECT_EQ(exported(), (Words{"a-vertical.mp4", "c-vertical.mp4"}));
}

TEST_F(ExportMany, PrintsEventsOfEachExportAndASummaryAsJson)
{
    const CliResult result = m_cli.run({"export", "a.mov", "bad.mov", "c.mov", "--into", "out", "--json"});
    EXPECT_EQ(result.status, 1);
    std::istringstream stream(result.output);
    Words events;
    Json last;
    for (std::string line; std::getline(stream, line);) {
        last = Json::parse(line);
        events.push_back(last.at("event"));
    }
    EXPECT_EQ(events, (Words{"started", "finished", "started", "failed", "started", "finished", "summary"}));
    EXPECT_EQ(last, (Json{{"event", "summary"}, {"saved", 2}, {"failed", 1}, {"notStarted", 0}}));
}

TEST_F(ExportMany, RefusesNamesThatCollideBeforeAnythingIsExported)
{
    m_cli.write("other/a.mp4", "a clip");
    const CliResult result = m_cli.run({"export", "c.mov", "a.mov", "other/a.mp4", "--into", "out"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error, "“a.mov” and “other/a.mp4” would both become " + quoted("out/a-vertical.mp4") +
                                ". Export one of them by itself, with another name.\n");
    EXPECT_TRUE(exported().empty());
}

TEST_F(ExportMany, RefusesToReplaceASource)
{
    fs::create_hard_link(m_cli.folder() / "c.mov", m_cli.folder() / "out/a-vertical.mp4");
    const CliResult result = m_cli.run({"export", "a.mov", "c.mov", "--into", "out", "--overwrite"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error,
              quoted("out/a-vertical.mp4") + " is a source itself, which is never overwritten.\n");
    EXPECT_EQ(m_cli.content("c.mov"), "a clip");
}

TEST_F(ExportMany, RefusesAFolderThatDoesNotExist)
{
    EXPECT_EQ(m_cli.run({"export", "a.mov", "--into", "none"}).error,
              "The folder " + quoted("none") + " does not exist.\n");
    EXPECT_EQ(m_cli.run({"export", "a.mov", "--into", "c.mov"}).error,
              quoted("c.mov") + " is not a folder.\n");
    const CliResult json = m_cli.run({"export", "a.mov", "c.mov", "--into", "none", "--json"});
    EXPECT_EQ(json.status, 1);
    EXPECT_TRUE(json.output.ends_with("{\"event\":\"summary\",\"saved\":0,\"failed\":0,\"notStarted\":2}\n"))
        << json.output;
}

TEST_F(ExportMany, ReplacesExistingExportsOnlyWithOverwrite)
{
    m_cli.write("out/a-vertical.mp4", "old");
    const CliResult kept = m_cli.run({"export", "a.mov", "c.mov", "--into", "out"});
    EXPECT_EQ(kept.status, 1);
    EXPECT_EQ(kept.error, "“a.mov”: " + quoted("out/a-vertical.mp4") +
                              " already exists. Replace it with --overwrite.\n"
                              "1 of 2 exports failed: “a.mov”.\n");
    EXPECT_EQ(m_cli.content("out/a-vertical.mp4"), "old");
    EXPECT_EQ(m_cli.run({"export", "a.mov", "c.mov", "--into", "out", "--overwrite"}).status, 0);
    EXPECT_EQ(m_cli.content("out/a-vertical.mp4"), "rendered");
}

TEST_F(ExportMany, TakesARecipeOnce)
{
    m_cli.write("look.json", R"({"stackreelRecipe": 1, "aspect": "1:1", "from": 3})");
    const CliResult dry =
        m_cli.run({"export", "a.mov", "c.mov", "--into", "out", "--recipe", "look.json", "--dry-run"});
    EXPECT_EQ(dry.status, 0) << dry.error;
    EXPECT_TRUE(dry.output.starts_with("-hide_banner\n-y\n-ss\n3.000\n")) << dry.output;
    EXPECT_NE(dry.output.find("a-vertical.mp4\n\n-hide_banner\n-y\n-ss\n3.000\n"), std::string::npos);
    EXPECT_TRUE(exported().empty());
    m_cli.write("look.json", "{");
    EXPECT_EQ(m_cli.run({"export", "a.mov", "c.mov", "--into", "out", "--recipe", "look.json"}).error,
              "The recipe " + quoted("look.json") + " is not valid JSON.\n");
}

TEST_F(ExportMany, EndsAfterASignal)
{
    m_cli.setTool("ffmpeg", "case \"$*\" in */c.mov*) printf half >\"$last\"; pause ;; esac; printf rendered "
                            ">\"$last\"");
    RunningCli running = m_cli.start({"export", "a.mov", "c.mov", "clip.mov", "--into", "out", "--json"});
    m_cli.waitForPausedTool();
    running.signal(SIGINT);
    const CliResult result = running.result();
    EXPECT_EQ(result.status, 130);
    EXPECT_EQ(result.error, "Cancelled.\n");
    EXPECT_TRUE(
        result.output.ends_with("{\"event\":\"summary\",\"saved\":1,\"failed\":1,\"notStarted\":1}\n"))
        << result.output;
    EXPECT_EQ(exported(), Words{"a-vertical.mp4"});
}

} // namespace

} // namespace stackreel
