#include "framing/ExportCommandBuilder.h"
#include "tests/cli/CliInstallation.h"
#include "tests/support/ScopedEnvironment.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sys/stat.h>

#include <chrono>
#include <string>
#include <vector>

namespace stackreel
{

namespace
{

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

const Names onlyTheClip = {"clip.mov"};

class CliProcess : public testing::Test
{
protected:
    /// Expects an export to fail with a message and to leave no file.
    void expectFailure(const std::string& message) const
    {
        const CliResult result = m_cli.run({"export", "clip.mov", "out.mp4"});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.error, message + "\n");
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(m_cli.names(), onlyTheClip);
    }
    std::string quoted(const fs::path& name) const { return "“" + (m_cli.folder() / name).string() + "”"; }

    CliInstallation m_cli;
};

TEST_F(CliProcess, ProbePrintsTheFacts)
{
    const CliResult result = m_cli.run({"probe", "clip.mov"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "Frame   1920 × 1080\nVideo   H264\nLength  0:10\nAudio   AAC\n");
    EXPECT_EQ(result.error, "");
}

TEST_F(CliProcess, ProbePrintsTheFactsAsJson)
{
    const CliResult result = m_cli.run({"probe", "--json", "clip.mov"});
    EXPECT_EQ(result.status, 0);
    const auto facts = nlohmann::json::parse(result.output);
    EXPECT_EQ(facts, nlohmann::json::parse(R"({"width": 1920, "height": 1080, "rotation": 0, "duration": 10.0,
        "videoCodec": "h264", "audioCodec": "aac", "displayAspect": 1.7777777777777777, "frameRate": null,
        "colour": {"matrix": null, "primaries": null, "transfer": null, "range": null},
        "audioTracks": [{"number": 1, "codec": "aac", "channels": null, "layout": null, "language": null,
                         "title": null}]})"));
}

TEST_F(CliProcess, ExportWritesTheFileAndPrintsItsName)
{
    const CliResult result = m_cli.run({"export", "clip.mov", "out.mp4"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "Saved out.mp4\n");
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(m_cli.names(), (Names{"clip.mov", "out.mp4"}));
    EXPECT_EQ(m_cli.content("out.mp4"), "rendered");
}

TEST_F(CliProcess, ExportWritesBesideTheSourceWithoutADestination)
{
    m_cli.write("folder/a b.final.MOV", "a clip");
    const CliResult result = m_cli.run({"export", "folder/a b.final.MOV"});
    EXPECT_EQ(result.output, "Saved a b.final-vertical.mp4\n");
    EXPECT_EQ(m_cli.content("folder/a b.final-vertical.mp4"), "rendered");
}

TEST_F(CliProcess, RemovesTheHiddenFilesThatAKilledExportHasLeftInTheFolderAndNoOthers)
{
    const std::string hidden = ".stackreel-0B5E3E4C-8A0F-4F4E-9A55-0E5B0A0C5D11";
    for (const std::string& name :
         {hidden + ".mp4", hidden + " (copy).mp4", std::string(".stackreel-mine.mp4")}) {
        m_cli.write(name, "left");
        const auto yesterday = fs::file_time_type::clock::now() - std::chrono::hours(25);
        fs::last_write_time(m_cli.folder() / name, yesterday);
    }
    EXPECT_EQ(m_cli.run({"export", "clip.mov", "out.mp4"}).status, 0);
    EXPECT_EQ(m_cli.names(), (Names{hidden + " (copy).mp4", ".stackreel-mine.mp4", "clip.mov", "out.mp4"}));
}

TEST_F(CliProcess, EncoderGetsTheSourceAndAHiddenFileBesideTheDestination)
{
    m_cli.run({"export", "clip.mov", "out.mp4", "--from", "2.5", "--to", "12.25"});
    const Names arguments = m_cli.encoderArguments();
    ASSERT_GT(arguments.size(), 8U);
    EXPECT_EQ(
        (Names{arguments.begin(), arguments.begin() + 8}),
        (Names{"-hide_banner", "-y", "-ss", "2.500", "-i", m_cli.folder() / "clip.mov", "-t", "7.500"}));
    EXPECT_TRUE(arguments.back().starts_with((m_cli.folder() / ".stackreel-").string())) << arguments.back();
    EXPECT_TRUE(arguments.back().ends_with(".mp4"));
}

TEST_F(CliProcess, DryRunPrintsTheArgumentsAndRendersNothing)
{
    const CliResult lines = m_cli.run({"export", "clip.mov", "--dry-run", "out.mp4", "--no-audio"});
    EXPECT_EQ(lines.status, 0);
    EXPECT_TRUE(lines.output.starts_with("-hide_banner\n-y\n-ss\n0.000\n-i\n" +
                                         (m_cli.folder() / "clip.mov").string() + "\n-t\n10.000\n"));
    EXPECT_TRUE(lines.output.ends_with("-an\n-metadata:s:v:0\nrotate=0\n" +
                                       (m_cli.folder() / "out.mp4").string() + "\n"));
    EXPECT_TRUE(m_cli.encoderArguments().empty());
    EXPECT_EQ(m_cli.names(), onlyTheClip);

    const CliResult json = m_cli.run({"export", "clip.mov", "--dry-run", "--json", "out.mp4", "--no-audio"});
    std::string joined;
    for (const auto& argument : nlohmann::json::parse(json.output).get<Names>())
        joined += argument + "\n";
    EXPECT_EQ(joined, lines.output);
}

TEST_F(CliProcess, DryRunRefusesWhatTheExportWouldRefuse)
{
    m_cli.write("old.mp4", "old");
    fs::create_hard_link(m_cli.folder() / "clip.mov", m_cli.folder() / "hard.mp4");
    const auto before = m_cli.names();
    for (const char* name : {"old.mp4", "hard.mp4", "none/out.mp4", "/proc/self/out.mp4"}) {
        const CliResult real = m_cli.run({"export", "clip.mov", name});
        const CliResult dry = m_cli.run({"export", "clip.mov", name, "--dry-run"});
        EXPECT_EQ(real.status, 1) << name;
        EXPECT_EQ(dry.status, 1) << name;
        EXPECT_EQ(dry.error, real.error);
        EXPECT_EQ(dry.output, "");
    }
    EXPECT_EQ(m_cli.run({"export", "clip.mov", "old.mp4", "--dry-run", "--overwrite"}).status, 0);
    EXPECT_EQ(m_cli.names(), before);
    EXPECT_EQ(m_cli.content("old.mp4"), "old");
}

TEST_F(CliProcess, ToolsGetFileNamesByteForByte)
{
    for (const std::string& name :
         {std::string("-y"), std::string("a b"), std::string("\"q'`$(x)\\"), std::string("100% %s %d"),
          std::string("über 東京"), std::string("line\nbreak"), std::string("\xff\xfe"), std::string("--"),
          std::string("concat:a|b")}) {
        const std::string source = name + ".mov";
        const std::string exported = name + "-vertical.mp4";
        m_cli.write(source, "a clip");
        const CliResult result = m_cli.run({"export", "--quiet", "--", source});
        EXPECT_EQ(result.status, 0) << name << result.error;
        EXPECT_EQ(result.output, "Saved " + exported + "\n");
        EXPECT_EQ(m_cli.content(exported), "rendered") << name;
        EXPECT_EQ(m_cli.encoderArguments().at(5), m_cli.folder() / source);
    }
}

TEST_F(CliProcess, JsonFailsForANameThatIsNotUtf8)
{
    const CliResult result = m_cli.run({"export", "\xff.mov", "--dry-run", "--json"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error, "A file name is not UTF-8, which JSON cannot carry. Leave --json out.\n");
    EXPECT_EQ(result.output, "");
}

TEST_F(CliProcess, ReplacesAnExistingFileOnlyWithOverwrite)
{
    m_cli.write("out.mp4", "old");
    const CliResult refused = m_cli.run({"export", "clip.mov", "out.mp4"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.error, quoted("out.mp4") + " already exists. Replace it with --overwrite.\n");
    EXPECT_TRUE(m_cli.encoderArguments().empty());
    EXPECT_EQ(m_cli.content("out.mp4"), "old");

    EXPECT_EQ(m_cli.run({"export", "clip.mov", "out.mp4", "--overwrite"}).status, 0);
    EXPECT_EQ(m_cli.content("out.mp4"), "rendered");
}

TEST_F(CliProcess, KeepsAFileThatAppearsDuringTheExport)
{
    m_cli.setTool("ffmpeg", "printf rendered >\"$last\"; printf other >\"${last%/*}/out.mp4\"");
    const CliResult result = m_cli.run({"export", "clip.mov", "out.mp4"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error, quoted("out.mp4") + " already exists. Replace it with --overwrite.\n");
    EXPECT_EQ(m_cli.content("out.mp4"), "other");
    EXPECT_EQ(m_cli.names(), (Names{"clip.mov", "out.mp4"}));
}

TEST_F(CliProcess, NeverOverwritesTheSource)
{
    fs::create_hard_link(m_cli.folder() / "clip.mov", m_cli.folder() / "hard.mp4");
    const CliResult result = m_cli.run({"export", "clip.mov", "hard.mp4", "--overwrite"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error, quoted("hard.mp4") + " is the source itself, which is never overwritten.\n");
    EXPECT_EQ(m_cli.content("clip.mov"), "a clip");
}

TEST_F(CliProcess, ExportHasTheUsersDefaultPermissions)
{
    m_cli.write("other", "");
    m_cli.setTool("ffmpeg", "printf rendered >\"$last\"");
    m_cli.run({"export", "clip.mov", "out.mp4"});
    const auto usual = fs::perms::owner_read | fs::perms::owner_write;
    EXPECT_EQ(fs::status(m_cli.folder() / "out.mp4").permissions(),
              fs::status(m_cli.folder() / "other").permissions());
    EXPECT_EQ(fs::status(m_cli.folder() / "out.mp4").permissions() & usual, usual);
}

TEST_F(CliProcess, NamesAMissingTool)
{
    m_cli.removeTool("ffmpeg");
    if (fs::exists("/usr/local/bin/ffmpeg") || fs::exists("/opt/homebrew/bin/ffmpeg"))
        GTEST_SKIP() << "this machine has an FFmpeg in a folder that the search includes";
    expectFailure("ffmpeg is missing. Build the bundled media tools first.");
    m_cli.removeTool("ffprobe");
    expectFailure("ffprobe is missing. Build the bundled media tools first.");
    EXPECT_EQ(m_cli.run({"probe", "clip.mov"}).error,
              "ffprobe is missing. Build the bundled media tools first.\n");
}

TEST_F(CliProcess, SaysSoWhenItMayNotStartAThreadOrATool)
{
    for (const int processes : {1, 2, 3}) {
        const CliResult result = m_cli.run({"probe", "/etc/passwd"}, {.processes = processes});
        EXPECT_EQ(result.status, 1) << processes;
        EXPECT_TRUE(result.error.starts_with("Could not start ")) << result.error;
        EXPECT_TRUE(result.error.ends_with(": Resource temporarily unavailable.\n")) << result.error;
    }
}

TEST_F(CliProcess, SaysWhatAFailedToolDidBeforeItsLastLines)
{
    const std::string advice = " It may be damaged, or not be a video. If no player opens it either, copy or "
                               "download it again.";
    m_cli.setTool("ffmpeg", "printf half >\"$last\"; echo 'frame=1 time=00:00:01.00' >&2; echo >&2; "
                            "echo 'av_write_frame(): No space left on device' >&2; exit 1");
    expectFailure("FFmpeg could not process this video. The disk is full. Free some space and try "
                  "again.\nav_write_frame(): No space left on device");
    m_cli.setTool("ffmpeg", "exit 7");
    expectFailure("FFmpeg could not process this video." + advice);
    m_cli.setTool("ffmpeg", "echo 'frame=1 fps=0.0' >&2; kill -KILL $$");
    expectFailure(
        "FFmpeg could not process this video. The system ended it, probably because memory ran out. "
        "Close other programs and try again.");
    m_cli.setTool("ffprobe", "printf '%s: No such file or directory\\n' \"$last\" >&2; exit 1");
    expectFailure("ffprobe could not process this video. A file does not exist, or was removed meanwhile.\n" +
                  (m_cli.folder() / "clip.mov").string() + ": No such file or directory");
}

TEST_F(CliProcess, FailsWhenTheEncoderWritesNoReadableFile)
{
    m_cli.setTool("ffmpeg", "exit 0");
    expectFailure("FFmpeg ended without an error but wrote no file.");
    m_cli.setTool("ffmpeg", "printf garbage >\"$last\"");
    m_cli.setTool("ffprobe", "case \"$last\" in */.stackreel-*) echo Invalid >&2; exit 1 ;; esac; "
                             "cat \"$tools/source.json\"");
    expectFailure("FFmpeg ended without an error but wrote a file that cannot be read.");
    m_cli.setTool("ffprobe",
                  "case \"$last\" in */.stackreel-*) echo '{}' ;; *) cat \"$tools/source.json\" ;; esac");
    expectFailure("FFmpeg ended without an error but wrote a file that cannot be read.");
}

TEST_F(CliProcess, DoesNotSaveAnExportThatFailsItsCheck)
{
    m_cli.setExportReport(landscapeReport);
    expectFailure(
        "The export did not become what was asked for: its picture is 1920 × 1080, not 1080 × 1920.");
    m_cli.write("out.mp4", "old");
    EXPECT_EQ(m_cli.run({"export", "clip.mov", "out.mp4", "--overwrite"}).status, 1);
    EXPECT_EQ(m_cli.content("out.mp4"), "old");
    EXPECT_EQ(m_cli.names(), (Names{"clip.mov", "out.mp4"}));
}

TEST_F(CliProcess, RefusesASourceThatIsNoLandscapeVideo)
{
    m_cli.setSourceReport(verticalReport);
    expectFailure("Choose a horizontal video. Stackreel only stacks crops from horizontal sources.");
    m_cli.setSourceReport(R"({"streams": []})");
    expectFailure("This file does not contain a video stream.");
}

TEST_F(CliProcess, RefusesASourceOfUnknownLength)
{
    m_cli.setSourceReport(
        R"({"streams": [{"codec_type": "video", "codec_name": "vp9", "width": 640, "height": 360}]})");
    expectFailure("The length of " + quoted("clip.mov") +
                  " is unknown. Give it one by copying it into a new "
                  "file, for example with: ffmpeg -i SOURCE -c copy copy.mkv");
    EXPECT_EQ(m_cli.run({"export", "clip.mov", "--dry-run"}).status, 1);
}

TEST_F(CliProcess, RefusesAPipeOrADeviceBeforeAnyToolReadsIt)
{
    ASSERT_EQ(::mkfifo((m_cli.folder() / "pipe.mov").c_str(), 0600), 0);
    fs::create_symlink("/dev/zero", m_cli.folder() / "zero.mov");
    m_cli.setTool("ffprobe", "exit 3");
    for (const char* source : {"pipe.mov", "zero.mov"})
        EXPECT_EQ(m_cli.run({"export", source, "out.mp4"}).error,
                  quoted(source) + " is a pipe or a device, and an export reads its source more than once. "
                                   "Copy it into a file first.\n");
    EXPECT_EQ(m_cli.run({"export", "missing.mov"}).error.substr(0, 37),
              "ffprobe could not process this video.");
    EXPECT_EQ(m_cli.run({"probe", "pipe.mov"}).error.substr(0, 37), "ffprobe could not process this video.");
}

TEST_F(CliProcess, ExitsWithStatusTwoAndAHintOnWrongUsage)
{
    const CliResult unknown = m_cli.run({"export", "clip.mov", "--overwite"});
    EXPECT_EQ(unknown.status, 2);
    EXPECT_EQ(unknown.error, "There is no option --overwite. Did you mean --overwrite?\n"
                             "Try 'stackreel-cli export --help'.\n");
    const CliResult noMp4 = m_cli.run({"export", "clip.mov", "out.mov"});
    EXPECT_EQ(noMp4.status, 2);
    EXPECT_TRUE(noMp4.error.ends_with("\nTry 'stackreel-cli export --help'.\n")) << noMp4.error;
    EXPECT_EQ(m_cli.run({}).status, 2);
    EXPECT_EQ(m_cli.names(), onlyTheClip);
}

TEST_F(CliProcess, RefusesOptionsThatQtKnows)
{
    EXPECT_EQ(m_cli.run({"export", "clip.mov", "-platform", "x"}).status, 2);
    EXPECT_EQ(m_cli.run({"export", "-qmljsdebugger=1", "clip.mov"}).status, 2);
}

TEST_F(CliProcess, FailsWhenStandardOutputCannotBeWritten)
{
    for (const char* output : {"/dev/full", "closed"}) {
        for (const Names& arguments :
             {Names{"probe", "clip.mov"}, {"export", "clip.mov", "--dry-run"}, {"--help"}, {"--version"}}) {
            const CliResult result = m_cli.run(arguments, {.output = output});
            EXPECT_EQ(result.status, 1) << output << arguments.front();
            EXPECT_TRUE(result.error.starts_with("Could not write to “standard output”: ")) << result.error;
        }
    }
}

TEST_F(CliProcess, SucceedsWithTheFileInPlaceWhenSavedCannotBeWritten)
{
    for (const char* output : {"/dev/full", "closed"}) {
        const CliResult saved =
            m_cli.run({"export", "clip.mov", "out.mp4", "--overwrite"}, {.output = output});
        EXPECT_EQ(saved.status, 0) << output;
        EXPECT_TRUE(saved.error.starts_with("Could not write to “standard output”: ")) << saved.error;
        EXPECT_EQ(m_cli.content("out.mp4"), "rendered");
    }
}

TEST_F(CliProcess, KeepsThePermissionsOfTheFileThatItReplaces)
{
    m_cli.write("out.mp4", "old");
    fs::permissions(m_cli.folder() / "out.mp4", fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(m_cli.run({"export", "clip.mov", "out.mp4", "--overwrite"}).status, 0);
    EXPECT_EQ(fs::status(m_cli.folder() / "out.mp4").permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(CliProcess, LeavesNothingInADestinationFolderThatWasRenamed)
{
    fs::create_directory(m_cli.folder() / "to");
    m_cli.setTool("ffmpeg", "printf rendered >\"$last\"; mv \"${last%/*}\" \"${last%/*}.moved\"; exit 3");
    const CliResult result = m_cli.run({"export", "clip.mov", "to/out.mp4"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error,
              "The folder " + quoted("to") +
                  " was moved or removed during the export. Export again into another folder.\n");
    EXPECT_TRUE(fs::is_empty(m_cli.folder() / "to.moved"));
}

TEST_F(CliProcess, AToolNeverReadsTheInputOfTheCallingScript)
{
    m_cli.setTool("ffmpeg", "cat >\"$tools/input\"; printf rendered >\"$last\"");
    // A tool with the terminal as standard input would wait for keys.
    EXPECT_EQ(m_cli.run({"export", "clip.mov", "out.mp4"}, {.onTerminal = true}).status, 0);
}

TEST_F(CliProcess, PrintsNoWarningInALocaleThatIsNotUtf8)
{
    const ScopedEnvironment all("LC_ALL", "C");
    const CliResult result = m_cli.run({"probe", "clip.mov"});
    EXPECT_EQ(result.error, "");
    EXPECT_TRUE(result.output.starts_with("Frame   1920 × 1080\n"));
}

} // namespace

} // namespace stackreel
