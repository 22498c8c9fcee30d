#include "cli/FailureText.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

struct Row {
    MediaToolError error;
    std::string text;
};

const std::string damaged =
    " could not process this video. It may be damaged, or not be a video. If no player opens it either, copy "
    "or download it again.";

TEST(FailureText, IsASentenceWithAdviceFollowedByTheToolsLines)
{
    const Row rows[] = {
        {MediaToolError::toolMissing("ffmpeg"), "ffmpeg is missing. Build the bundled media tools first."},
        {MediaToolError::noVideo(), "This file does not contain a video stream."},
        {MediaToolError::processFailed("ffprobe", 1, ""), "ffprobe" + damaged},
        {MediaToolError::processFailed("ffprobe", 1, "[mov @ 0x5] moov atom not found\na.mp4: Invalid data"),
         "ffprobe" + damaged + "\n[mov @ 0x5] moov atom not found\na.mp4: Invalid data"},
        {MediaToolError::processFailed("FFmpeg", 1, "frame=    1 fps=0.0\nav_write: No space left on device"),
         "FFmpeg could not process this video. The disk is full. Free some space and try again.\nav_write: "
         "No "
         "space left on device"},
        {MediaToolError::processFailed(
             "FFmpeg", 1,
             "frame=    1 fps=0.0 \rframe=    9 fps=8.7 \rav_write: No space left on "
             "device\r\nframe=   12 fps=8.7 \r"),
         "FFmpeg could not process this video. The disk is full. Free some space and try again.\nav_write: "
         "No "
         "space left on device"},
        {MediaToolError::processFailed("ffprobe", 1, "a.mp4: No such file or directory"),
         "ffprobe could not process this video. A file does not exist, or was removed meanwhile.\na.mp4: No "
         "such "
         "file or directory"},
        {MediaToolError::processFailed("FFmpeg", 1, "/usr/bin/ffmpeg could not be asked for its encoders."),
         "FFmpeg could not process this video. It could not be started completely. Try again.\n"
         "/usr/bin/ffmpeg could not be asked for its encoders."},
        {MediaToolError::processFailed("ffprobe", 1, "a.mp4: Too many open files"),
         "ffprobe could not process this video. The system allows no more open files here. Close other "
         "programs, or allow more (“ulimit -n”).\na.mp4: Too many open files"},
        {MediaToolError::processFailed("FFmpeg", 1, "Error: Resource temporarily unavailable"),
         "FFmpeg could not process this video. The system allows no more processes here. Close other "
         "programs, or allow more (“ulimit -u”).\nError: Resource temporarily unavailable"},
        {MediaToolError::processFailed("FFmpeg", 1, "Error while opening encoder for output stream #0:0"),
         "FFmpeg could not process this video. The encoder could not be started; the system may allow no "
         "more processes or memory. Close other programs and try again.\n"
         "Error while opening encoder for output stream #0:0"},
        {MediaToolError::processFailed("FFmpeg", 9,
                                       "FFmpeg could not process this video. The system ended it."),
         "FFmpeg could not process this video. The system ended it."},
        {MediaToolError::processFailed(
             "FFmpeg", 1, "[stackreel] encoder=libx264: why\n[stackreel] none\nError: Is a directory"),
         "FFmpeg could not process this video. A folder was named in place of a file.\nError: Is a "
         "directory"},
    };
    for (const Row& row : rows) {
        const auto [sentence, toolLines] = FailureText::of(row.error);
        EXPECT_EQ(toolLines.empty() ? sentence : sentence + "\n" + toolLines, row.text);
    }
}

TEST(FailureText, KeepsTheSentenceAndTheToolsLinesApart)
{
    const auto text = FailureText::of(MediaToolError::processFailed("ffprobe", 1, "one\ntwo"));
    EXPECT_EQ(text.sentence, "ffprobe" + damaged);
    EXPECT_EQ(text.toolLines, "one\ntwo");
    const auto crashed = FailureText::of(MediaToolError::processFailed(
        "FFmpeg", 11, "FFmpeg could not process this video. It crashed.\n[stackreel] a=b: c\nlast line"));
    EXPECT_EQ(crashed.sentence, "FFmpeg could not process this video. It crashed.");
    EXPECT_EQ(crashed.toolLines, "last line");
}

} // namespace

} // namespace stackreel
