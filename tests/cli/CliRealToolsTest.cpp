#include "media/MediaProbe.h"
#include "model/FileExport.h"
#include "tests/cli/CliInstallation.h"
#include "tests/support/Awaited.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <csignal>
#include <cstdlib>
#include <string>
#include <vector>

namespace stackreel
{

namespace
{

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

/// The built command line with the system's FFmpeg, in a folder with clips that FFmpeg generates.
class CliRealTools : public testing::Test
{
protected:
    CliResult run(const Names& arguments) const { return start(arguments).result(); }
    RunningCli start(const Names& arguments) const
    {
        return RunningCli(STACKREEL_CLI, arguments, m_folder.path(), {});
    }
    /// Makes a landscape clip with sound and returns its name.
    std::string makeClip(const std::string& name, const std::string& size, const std::string& seconds) const
    {
        const CliResult result = RunningCli("/usr/bin/env",
                                            {"ffmpeg",
                                             "-v",
                                             "error",
                                             "-f",
                                             "lavfi",
                                             "-i",
                                             "testsrc2=r=25:s=" + size + ":d=" + seconds,
                                             "-f",
                                             "lavfi",
                                             "-i",
                                             "sine=d=" + seconds,
                                             "-c:v",
                                             "libx264",
                                             "-preset",
                                             "ultrafast",
                                             "-c:a",
                                             "aac",
                                             "-movflags",
                                             "+faststart",
                                             "file:" + name},
                                            m_folder.path(), {})
                                     .result();
        EXPECT_EQ(result.status, 0) << result.error;
        return name;
    }
    ProbeDocument report(const std::string& name) const
    {
        return runToEnd(MediaProbe::report(m_folder / name));
    }

    TemporaryDirectory m_folder;
};

TEST_F(CliRealTools, ExportsAClipWithSpecialCharactersInItsName)
{
    const std::string clip = makeClip("-ü 東京 100% 'a\" b.mov", "320x180", "2");
    const CliResult result = run({"export", "--size", "180x320", "--from", "0.5", "--to", "1.5", "--", clip});
    EXPECT_EQ(result.status, 0) << result.error;
    EXPECT_EQ(result.output, "Saved -ü 東京 100% 'a\" b-vertical.mp4\n");
    EXPECT_EQ(m_folder.names().size(), 2U);

    const ProbeDocument exported = report("-ü 東京 100% 'a\" b-vertical.mp4");
    ASSERT_EQ(exported.streams.size(), 2U);
    EXPECT_EQ(exported.streams[0].codecName, "h264");
    EXPECT_EQ(exported.streams[0].width, 180);
    EXPECT_EQ(exported.streams[0].height, 320);
    EXPECT_NEAR(std::atof(exported.streams[0].duration.value_or("").c_str()), 1, 0.1);
    EXPECT_EQ(exported.streams[1].codecName, "aac");
}

TEST_F(CliRealTools, ExportHasNoSoundWithNoAudio)
{
    const std::string clip = makeClip("clip.mov", "320x180", "1");
    ASSERT_EQ(run({"export", clip, "out.mp4", "--size", "180x320", "--no-audio"}).status, 0);
    EXPECT_EQ(report("out.mp4").streams.size(), 1U);
}

TEST_F(CliRealTools, RepeatsAnExportOfTheWindowBitForBitFromItsFileAlone)
{
    makeClip("clip.mov", "320x180", "2");
    ExportRequest request;
    request.input = m_folder / "clip.mov";
    request.output = m_folder / "window.mp4";
    request.media = runToEnd(MediaProbe::inspect(request.input));
    request.top = CropRegion{.x = 1 / 7.0, .y = 0.1, .width = 1 / 3.0, .height = 0.7};
    request.bottom = CropRegion{.x = 0.5, .y = 1 / 9.0, .width = 0.4, .height = 2 / 3.0};
    request.settings = {.aspect = OutputAspect::custom, .customWidth = 181, .customHeight = 320};
    request.trimStart = 1 / 3.0;
    request.trimEnd = 5 / 3.0;
    const auto atOnce = []() -> QCoro::Task<ExportTurn> { co_return ExportTurn(); };
    runToEnd(FileExport::replace(request, atOnce, {}));
    const CliResult result = run({"export", "--like", "window.mp4", "clip.mov", "again.mp4"});
    EXPECT_EQ(result.status, 0) << result.error;
    const std::string first = contentOf(m_folder / "window.mp4");
    EXPECT_GT(first.size(), 1000U);
    EXPECT_TRUE(first == contentOf(m_folder / "again.mp4"));
}

TEST_F(CliRealTools, ExportsTheChosenSoundTrack)
{
    const Names arguments = {"ffmpeg",
                             "-v",
                             "error",
                             "-f",
                             "lavfi",
                             "-i",
                             "testsrc2=r=25:s=320x180:d=1",
                             "-f",
                             "lavfi",
                             "-i",
                             "sine=d=1",
                             "-f",
                             "lavfi",
                             "-i",
                             "anullsrc=cl=stereo",
                             "-map",
                             "0",
                             "-map",
                             "1",
                             "-map",
                             "2",
                             "-t",
                             "1",
                             "-c:v",
                             "libx264",
                             "-preset",
                             "ultrafast",
                             "-c:a",
                             "aac",
                             "clip.mkv"};
    ASSERT_EQ(RunningCli("/usr/bin/env", arguments, m_folder.path(), {}).result().status, 0);
    EXPECT_TRUE(
        run({"probe", "clip.mkv"}).output.ends_with("Audio 1 AAC, 1 channel\nAudio 2 AAC, 2 channels\n"));
    for (const int track : {1, 2}) {
        const CliResult result = run({"export", "clip.mkv", "out.mp4", "--overwrite", "--size", "180x320",
                                      "--audio-track", std::to_string(track)});
        EXPECT_EQ(result.status, 0) << result.error;
        ASSERT_EQ(report("out.mp4").streams.size(), 2U);
        EXPECT_EQ(report("out.mp4").streams[1].details.channels, track);
    }
    EXPECT_EQ(run({"export", "clip.mkv", "--audio-track", "3"}).error,
              "The video has no sound track 3. It has 2.\n");
}

TEST_F(CliRealTools, ProbeReportsTheFactsOfAClip)
{
    const auto facts =
        nlohmann::json::parse(run({"probe", "--json", makeClip("clip.mov", "320x180", "1")}).output);
    EXPECT_EQ(facts, nlohmann::json::parse(R"({"width": 320, "height": 180, "rotation": 0, "duration": 1.0,
        "videoCodec": "h264", "audioCodec": "aac", "displayAspect": 1.7777777777777777, "frameRate": 25.0,
        "colour": {"matrix": null, "primaries": null, "transfer": null, "range": null},
        "audioTracks": [{"number": 1, "codec": "aac", "channels": 1, "layout": "mono", "language": null,
                         "title": null}]})"));
}

TEST_F(CliRealTools, ShowsTheToolsMessageForAFileThatIsNoVideo)
{
    m_folder.write("text.mov", "no video");
    fs::create_directory(m_folder / "folder.mov");
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"none.mov", ": No such file or directory\n"},
        {"folder.mov", ": Is a directory\n"},
        {"text.mov", ": Invalid data found when processing input\n"},
    };
    for (const auto& [name, ending] : rows) {
        const CliResult result = run({"export", name, "out.mp4"});
        EXPECT_EQ(result.status, 1);
        EXPECT_TRUE(result.error.ends_with((m_folder / name).string() + ending)) << result.error;
    }
    EXPECT_EQ(m_folder.names(), (Names{"folder.mov", "text.mov"}));
}

TEST_F(CliRealTools, ExportsAClipWhoseSoundAndPictureEndAtDifferentTimes)
{
    // Matroska states one length for both.
    const auto make = [this](const std::string& picture, const std::string& sound, const std::string& name) {
        const Names arguments = {"ffmpeg",
                                 "-v",
                                 "error",
                                 "-f",
                                 "lavfi",
                                 "-i",
                                 "testsrc2=r=25:s=320x180:d=" + picture,
                                 "-f",
                                 "lavfi",
                                 "-i",
                                 "sine=d=" + sound,
                                 "-c:v",
                                 "libx264",
                                 "-preset",
                                 "ultrafast",
                                 "-c:a",
                                 "aac",
                                 name};
        EXPECT_EQ(RunningCli("/usr/bin/env", arguments, m_folder.path(), {}).result().status, 0);
    };
    make("3", "6", "short picture.mkv");
    make("6", "2", "short sound.mkv");
    const std::vector<Names> rows = {
        {"short picture.mkv", "--no-audio"}, {"short picture.mkv"}, {"short sound.mkv", "--from", "3"}};
    for (const Names& row : rows) {
        Names arguments = {"export", "--size", "180x320", "--quiet"};
        arguments.insert(arguments.end(), row.begin(), row.end());
        const CliResult result = run(arguments);
        EXPECT_EQ(result.status, 0) << row.back() << result.error;
        fs::remove(m_folder / "short picture-vertical.mp4");
    }
}

TEST_F(CliRealTools, FailsForATruncatedClipThatStatesOneLength)
{
    makeClip("clip.mkv", "320x180", "6");
    fs::resize_file(m_folder / "clip.mkv", fs::file_size(m_folder / "clip.mkv") / 2);
    for (const char* sound : {"--no-audio", "--quiet"}) {
        const CliResult result =
            run({"export", "clip.mkv", "out.mp4", "--size", "180x320", "--quiet", sound});
        EXPECT_EQ(result.status, 1);
        EXPECT_TRUE(result.error.starts_with("The export did not become what was asked for: it lasts "))
            << result.error;
    }
}

TEST_F(CliRealTools, FailsForATruncatedClip)
{
    // FFmpeg itself exits with status 0 here.
    const fs::path clip = m_folder / makeClip("clip.mp4", "320x180", "4");
    fs::resize_file(clip, fs::file_size(clip) / 2);
    const CliResult result = run({"export", "clip.mp4", "out.mp4", "--size", "180x320", "--quiet"});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.error.starts_with("The export did not become what was asked for: it lasts "))
        << result.error;
    EXPECT_EQ(m_folder.names(), Names{"clip.mp4"});
}

TEST_F(CliRealTools, LeavesNoFileAfterASignal)
{
    makeClip("clip.mov", "640x360", "20");
    for (const int number : {SIGINT, SIGTERM}) {
        RunningCli running = start({"export", "clip.mov", "out.mp4"});
        EXPECT_TRUE(eventually([this] { return m_folder.names().size() == 2; }));
        running.signal(number);
        const CliResult result = running.result();
        EXPECT_EQ(result.status, 128 + number) << result.error;
        EXPECT_TRUE(result.error.ends_with("Cancelled.\n")) << result.error;
        EXPECT_EQ(m_folder.names(), Names{"clip.mov"});
    }
}

} // namespace

} // namespace stackreel
