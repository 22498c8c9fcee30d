#include "cli/Progress.h"
#include "system/RunningChildren.h"
#include "tests/cli/CliInstallation.h"
#include "tests/support/Awaited.h"
#include "tests/support/ChildReport.h"

#include <gtest/gtest.h>

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace stackreel
{

namespace
{

using Names = std::vector<std::string>;

/// A moment of an export, and a fake tool that pauses at that moment.
struct Moment {
    const char* name;
    const char* tool;
    const char* script;
};

const std::vector<Moment> moments = {
    {"while the source is probed", "ffprobe",
     "case \"$last\" in */.stackreel-*) cat \"$tools/export.json\" ;; *) pause; cat \"$tools/source.json\" "
     ";; esac"},
    {"while it renders", "ffmpeg", "printf half >\"$last\"; pause; printf whole >\"$last\""},
    {"while the export is probed", "ffprobe",
     "case \"$last\" in */.stackreel-*) pause; cat \"$tools/export.json\" ;; *) cat \"$tools/source.json\" "
     ";; esac"},
};

bool isRunning(pid_t pid)
{
    return ::kill(pid, 0) == 0 || errno != ESRCH;
}

/// Whether a process that is not our child has ended, even if nobody has reaped it.
bool hasEnded(pid_t pid)
{
    const std::string status = contentOf("/proc/" + std::to_string(pid) + "/stat");
    return status.empty() || status.find(") Z ") != std::string::npos;
}

TEST(CliSignal, EndsTheToolRemovesTheFileAndGivesTheShellsStatus)
{
    for (const Moment& moment : moments) {
        for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
            const CliInstallation cli;
            cli.setTool(moment.tool, moment.script);
            cli.write("out.mp4", "old");
            RunningCli running = cli.start({"export", "clip.mov", "out.mp4", "--overwrite"});
            const pid_t tool = cli.waitForPausedTool();
            running.signal(number);
            const CliResult result = running.result();
            EXPECT_EQ(result.status, 128 + number) << moment.name;
            EXPECT_EQ(result.error, "Cancelled.\n") << moment.name;
            EXPECT_EQ(result.output, "") << moment.name;
            EXPECT_FALSE(isRunning(tool)) << moment.name;
            EXPECT_EQ(cli.names(), (Names{"clip.mov", "out.mp4"})) << moment.name;
            EXPECT_EQ(cli.content("out.mp4"), "old") << moment.name;
        }
    }
}

TEST(CliSignal, LeavesNothingBehindWhenItCannotBeCaught)
{
    const CliInstallation cli;
    cli.setTool("ffmpeg", "printf half >\"$last\"; pause; printf whole >\"$last\"");
    cli.write("out.mp4", "old");
    RunningCli running = cli.start({"export", "clip.mov", "out.mp4", "--overwrite"});
    const pid_t tool = cli.waitForPausedTool();
    running.signal(SIGKILL);
    EXPECT_EQ(running.result().status, 1000 + SIGKILL);
    EXPECT_TRUE(eventually([&] { return hasEnded(tool); }));
    EXPECT_TRUE(eventually([&] { return cli.names() == Names{"clip.mov", "out.mp4"}; }));
    EXPECT_EQ(cli.content("out.mp4"), "old");
}

TEST(CliSignal, EndsAProbe)
{
    const CliInstallation cli;
    cli.setTool("ffprobe", "pause; cat \"$tools/source.json\"");
    RunningCli running = cli.start({"probe", "clip.mov"});
    const pid_t tool = cli.waitForPausedTool();
    running.signal(SIGINT);
    EXPECT_EQ(running.result().status, 130);
    EXPECT_FALSE(isRunning(tool));
}

TEST(CliSignal, WaitsForAToolThatEndsSlowly)
{
    const CliInstallation cli;
    cli.setTool("ffmpeg", "end() { touch \"$last.ending\"; until [ -e \"$tools/go\" ]; do sleep 0.02; done; "
                          "rm \"$last.ending\"; printf finished >\"$last\"; exit 0; }; "
                          "trap end TERM; printf half >\"$last\"; pause");
    RunningCli running = cli.start({"export", "clip.mov", "out.mp4"});
    const pid_t tool = cli.waitForPausedTool();
    running.signal(SIGTERM);
    const auto isMark = [](const std::string& name) { return name.ends_with(".ending"); };
    const auto toolIsEnding = [&] { return std::ranges::any_of(cli.names(), isMark); };
    ASSERT_TRUE(eventually(toolIsEnding));
    EXPECT_FALSE(running.hasEnded());
    cli.resumeTool();
    EXPECT_EQ(running.result().status, 143);
    EXPECT_FALSE(isRunning(tool));
    EXPECT_EQ(cli.names(), Names{"clip.mov"});
}

/// Whether a process has yet to receive a signal that was sent to it.
bool isPending(pid_t process, int signal)
{
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("ShdPnd:"))
            return (std::stoull(line.substr(7), nullptr, 16) >> (signal - 1) & 1U) != 0;
    return false;
}

const char* const stubborn = "trap '' INT TERM HUP QUIT; printf half >\"$last\"; pause";

TEST(CliSignal, KillsAToolThatIgnoresSignalsAfterTheGracePeriod)
{
    const CliInstallation cli;
    cli.setTool("ffmpeg", stubborn);
    RunningCli running = cli.start({"export", "clip.mov", "out.mp4"});
    const pid_t tool = cli.waitForPausedTool();
    running.signal(SIGTERM);
    const CliResult result = running.result();
    EXPECT_EQ(result.status, 143);
    EXPECT_EQ(result.error, "Cancelled.\n");
    EXPECT_FALSE(isRunning(tool));
    EXPECT_EQ(cli.names(), Names{"clip.mov"});
}

TEST(CliSignal, KillsAToolThatIgnoresSignalsAtTheSecondSignal)
{
    const CliInstallation cli;
    cli.setTool("ffmpeg", stubborn);
    RunningCli running = cli.start({"export", "clip.mov", "out.mp4"});
    const pid_t tool = cli.waitForPausedTool();
    const auto start = std::chrono::steady_clock::now();
    running.signal(SIGTERM);
    // Two signals that are pending at once may be received in either order.
    ASSERT_TRUE(eventually([&] { return !isPending(running.pid(), SIGTERM); }));
    EXPECT_FALSE(running.hasEnded());
    running.signal(SIGINT);
    EXPECT_EQ(running.result().status, 143);
    EXPECT_LT(std::chrono::steady_clock::now() - start, RunningChildren::gracePeriod);
    EXPECT_FALSE(isRunning(tool));
    EXPECT_EQ(cli.names(), Names{"clip.mov"});
}

TEST(CliSignal, ReportsCancellationWhenControlCEndsTheToolFirst)
{
    for (const Moment& moment : moments) {
        const CliInstallation cli;
        cli.setTool(moment.tool, moment.script);
        RunningCli running = cli.start({"export", "clip.mov", "out.mp4"}, {.onTerminal = true});
        const pid_t tool = cli.waitForPausedTool();
        running.type("\x03");
        const CliResult result = running.result();
        EXPECT_EQ(result.status, 130) << moment.name;
        EXPECT_TRUE(result.error.ends_with("Cancelled.\r\n")) << moment.name << result.error;
        EXPECT_FALSE(isRunning(tool)) << moment.name;
        EXPECT_EQ(cli.names(), Names{"clip.mov"}) << moment.name;
    }
}

TEST(CliSignal, StaysIgnoredByTheProgramAndItsToolsWhenItWasIgnoredFromTheStart)
{
    for (const Moment& moment : moments) {
        for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
            const CliInstallation cli;
            cli.setTool(moment.tool, moment.script);
            RunningCli running = cli.start({"export", "clip.mov", "out.mp4"}, {.ignored = {number}});
            const pid_t tool = cli.waitForPausedTool();
            running.signal(number);
            ::kill(tool, number);
            cli.resumeTool();
            const CliResult result = running.result();
            EXPECT_EQ(result.status, 0) << moment.name << " by " << number << ": " << result.error;
            EXPECT_NE(cli.content("out.mp4"), "");
        }
    }
}

TEST(CliSignal, FinishesTheExportWhenTheTerminalClosesAndHangUpsAreIgnored)
{
    const CliInstallation cli;
    cli.setTool("ffmpeg", moments[1].script);
    RunningCli running =
        cli.start({"export", "clip.mov", "out.mp4"}, {.onTerminal = true, .ignored = {SIGHUP}});
    cli.waitForPausedTool();
    running.closeTerminal();
    cli.resumeTool();
    EXPECT_EQ(running.result().status, 0);
    EXPECT_EQ(cli.content("out.mp4"), "whole");
}

TEST(CliSignal, EndsTheProgramOnceWhenSentManyTimes)
{
    const CliInstallation cli;
    cli.setTool("ffmpeg", moments[1].script);
    RunningCli running = cli.start({"export", "clip.mov", "out.mp4"});
    cli.waitForPausedTool();
    running.signal(SIGTERM);
    for (int i = 0; i < 100 && !running.hasEnded(); ++i)
        running.signal(SIGINT);
    const int status = running.result().status;
    EXPECT_TRUE(status == 143 || status == 130) << status;
    EXPECT_EQ(cli.names(), Names{"clip.mov"});
}

TEST(CliProgress, IsABarOnATerminalAndIsClearedAtTheEnd)
{
    const CliInstallation cli;
    cli.setTool("ffmpeg", "printf 'frame=  1 time=00:00:04.20 bitrate=1 speed=2.1x    \\r' >&2; pause; "
                          "printf rendered >\"$last\"");
    RunningCli running = cli.start({"export", "clip.mov", "out.mp4"}, {.onTerminal = true});
    cli.waitForPausedTool();
    const std::string bar = Progress{.percent = 42, .speed = 2.1, .secondsLeft = 2.8}.bar(57);
    EXPECT_TRUE(eventually([&] { return running.screen().ends_with("\r" + bar); })) << running.screen();
    cli.resumeTool();
    const CliResult result = running.result();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "Saved out.mp4\n");
    EXPECT_TRUE(result.error.ends_with("\r" + std::string(59, ' ') + "\r")) << result.error;
}

TEST(CliProgress, IsPlainLinesWithoutATerminal)
{
    const CliInstallation cli;
    cli.setTool("ffmpeg", "printf 'frame=  1 time=00:00:04.20 bitrate=1 speed=2.1x    \\r' >&2; pause; "
                          "printf rendered >\"$last\"");
    RunningCli running = cli.start({"export", "clip.mov", "out.mp4"});
    cli.waitForPausedTool();
    EXPECT_TRUE(eventually([&] { return !running.errorSoFar().empty(); }));
    cli.resumeTool();
    EXPECT_EQ(running.result().error, "42 %, 2.10x, 0:03 left\n");
}

/// Whether the program has read what a tool wrote to standard error: it holds the file with that text open.
bool hasReadProgress(pid_t program)
{
    const std::filesystem::path process = "/proc/" + std::to_string(program);
    std::error_code none;
    for (const auto& entry : std::filesystem::directory_iterator(process / "fd", none)) {
        if (std::filesystem::read_symlink(entry, none).filename() != "stderr")
            continue;
        auto facts = keysAndValues(contentOf(process / "fdinfo" / entry.path().filename()));
        const bool isForReading = (std::strtol(facts["flags"].c_str(), nullptr, 8) & O_ACCMODE) == O_RDONLY;
        if (isForReading && facts["pos"] != "0")
            return true;
    }
    return false;
}

TEST(CliProgress, IsNotShownWhenQuiet)
{
    for (const bool onTerminal : {false, true}) {
        const CliInstallation cli;
        cli.setTool("ffmpeg", "printf 'frame=  1 time=00:00:04.20 bitrate=1 speed=2.1x    \\r' >&2; pause; "
                              "printf rendered >\"$last\"");
        RunningCli running =
            cli.start({"export", "clip.mov", "out.mp4", "--quiet"}, {.onTerminal = onTerminal});
        cli.waitForPausedTool();
        EXPECT_TRUE(eventually([&] { return hasReadProgress(running.pid()); }));
        cli.resumeTool();
        const CliResult result = running.result();
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.error, "");
        EXPECT_EQ(result.output, "Saved out.mp4\n");
    }
}

} // namespace

} // namespace stackreel
