#include "media/MediaToolError.h"

#include <gtest/gtest.h>

namespace stackreel
{

TEST(MediaToolError, DescribesEachErrorExactly)
{
    struct Row {
        MediaToolError error;
        std::string description;
    };
    const Row rows[] = {
        {MediaToolError::toolMissing("ffprobe"), "ffprobe is missing. Build the bundled media tools first."},
        {MediaToolError::toolMissing("ffmpeg"), "ffmpeg is missing. Build the bundled media tools first."},
        {MediaToolError::toolMissing(""), " is missing. Build the bundled media tools first."},
        {MediaToolError::processFailed("FFmpeg", 1, ""), "FFmpeg could not process this video."},
        {MediaToolError::processFailed("ffprobe", -9, ""), "ffprobe could not process this video."},
        {MediaToolError::processFailed("FFmpeg", 1, "No such filter"), "No such filter"},
        {MediaToolError::processFailed("FFmpeg", 0, "two\nlines "), "two\nlines "},
        {MediaToolError::processFailed("FFmpeg", 187, " "), " "},
        {MediaToolError::invalidProbe(), "The video details could not be read."},
        {MediaToolError::noVideo(), "This file does not contain a video stream."},
        {MediaToolError::verticalSource(),
         "Choose a horizontal video. Stackreel only stacks crops from horizontal sources."},
        {MediaToolError::cancelled(), "The export was cancelled."},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.error.errorDescription(), row.description);
        EXPECT_EQ(row.error.what(), row.description);
    }
}

TEST(MediaToolError, KeepsTheToolTheStatusAndTheMessage)
{
    const auto error = MediaToolError::processFailed("ffprobe", -1, "words");
    const auto& failure = std::get<MediaToolError::ProcessFailed>(error.value());
    EXPECT_EQ(failure.tool, "ffprobe");
    EXPECT_EQ(failure.status, -1);
    EXPECT_EQ(failure.message, "words");
    EXPECT_EQ(std::get<MediaToolError::ToolMissing>(MediaToolError::toolMissing("ffmpeg").value()).name,
              "ffmpeg");
}

TEST(MediaToolError, IsCopyableAndComparable)
{
    const auto error = MediaToolError::processFailed("FFmpeg", 1, "words");
    const MediaToolError copy = error;
    EXPECT_EQ(copy, error);
    EXPECT_EQ(copy.errorDescription(), "words");
    EXPECT_FALSE(error == MediaToolError::processFailed("FFmpeg", 2, "words"));
    EXPECT_FALSE(error == MediaToolError::processFailed("ffprobe", 1, "words"));
    EXPECT_FALSE(MediaToolError::noVideo() == MediaToolError::verticalSource());
}

} // namespace stackreel
