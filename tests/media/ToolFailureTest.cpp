#include "media/ToolFailure.h"

#include "media/MediaToolError.h"
#include "media/TemporaryFolderFull.h"
#include "tests/support/ScopedEnvironment.h"

#include <gtest/gtest.h>

#include <csignal>

namespace stackreel
{

namespace
{

std::string failureOf(const ProcessOutput& output)
{
    try {
        throwToolFailure("FFmpeg", output);
    } catch (const std::exception& error) {
        return error.what();
    }
}

ProcessOutput endedBy(int signal, const std::string& standardError)
{
    return {.status = signal, .standardOutput = "", .standardError = standardError, .endedBySignal = true};
}

TEST(ToolFailure, ShowsTheLastLinesOfAToolThatExited)
{
    EXPECT_EQ(failureOf({.status = 9, .standardOutput = "", .standardError = "a\n\nb\n"}), "a\nb");
    EXPECT_EQ(failureOf({.status = 1, .standardOutput = "", .standardError = ""}),
              "FFmpeg could not process this video.");
}

TEST(ToolFailure, IsAMissingToolWhenThereIsNoSystemTool)
{
    const auto missing = MediaToolError::toolMissing("ffmpeg");
    try {
        throwToolFailure(
            "FFmpeg",
            {.status = 127, .standardOutput = "", .standardError = missing.errorDescription() + "\n"});
    } catch (const MediaToolError& error) {
        EXPECT_EQ(error, missing);
    }
}

TEST(ToolFailure, SaysWhatEndedAToolInsteadOfItsProgress)
{
    const std::string progress = "  Stream #0:0 -> #0:0 (h264)\nframe=    1 fps=0.0 q=0.0\n";
    EXPECT_EQ(
        failureOf(endedBy(SIGKILL, progress)),
        "FFmpeg could not process this video. The system ended it, probably because memory ran out. Close "
        "other programs and try again.");
    EXPECT_EQ(failureOf(endedBy(SIGXFSZ, progress)),
              "FFmpeg could not process this video. Its file reached the largest size that is allowed here "
              "(“ulimit -f”). Allow larger files, or export a shorter part.");
    EXPECT_EQ(failureOf(endedBy(SIGTERM, progress)),
              "FFmpeg could not process this video. It was ended by signal 15. Try again.");
}

TEST(ToolFailure, SaysWhatEndedFFmpegWhenItCaughtTheSignal)
{
    const ProcessOutput output = {.status = 255,
                                  .standardOutput = "",
                                  .standardError = "frame=   30 fps=0.0\nvideo:1133kB audio:16kB\n"
                                                   "Exiting normally, received signal 15.\n"};
    EXPECT_EQ(failureOf(output),
              "FFmpeg could not process this video. It was ended by signal 15. Try again.");
}

TEST(ToolFailure, ShowsTheLastLinesOfAToolThatCrashed)
{
    EXPECT_EQ(failureOf(endedBy(SIGABRT, "Assertion x failed\n")),
              "FFmpeg could not process this video. It crashed (signal 6). Another version of it may "
              "succeed.\nAssertion x failed");
}

TEST(ToolFailure, SaysThatTheTemporaryFolderIsFullWhereNoLineCouldBeWritten)
{
    const ScopedEnvironment folder("TMPDIR", "/full");
    ProcessOutput output = {.status = 1, .standardOutput = "", .standardError = "", .captureIsFull = true};
    EXPECT_EQ(failureOf(output),
              "The temporary folder “/full” is full. Free some space there, or choose another "
              "folder with TMPDIR.");
    output.standardError = "a reason\n";
    EXPECT_EQ(failureOf(output), "a reason");
}

} // namespace

} // namespace stackreel
