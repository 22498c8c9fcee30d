#include "media/MediaPipeline.h"

#include "media/CancellationError.h"
#include "media/MediaToolError.h"
#include "system/SystemError.h"
#include "tests/model/FakeToolTest.h"
#include "tests/support/Awaited.h"
#include "tests/support/ScopedSystemCalls.h"
#include "tests/support/Uuid.h"
#include "tests/support/fakes/FakeStills.h"

#include <unistd.h>

#include <cerrno>
#include <thread>

namespace stackreel
{

namespace
{

class MediaPipelineTest : public FakeToolTest
{
protected:
    const std::filesystem::path source = "/clips/-Beach 'day' 東京 100%.MOV";
    const std::shared_ptr<FakeStills> m_stills = std::make_shared<FakeStills>();
};

using PreviewSource = MediaPipelineTest;
using PreviewCopy = MediaPipelineTest;

} // namespace

TEST_F(PreviewSource, IsAPreviewCopyUnlessThePlayerCanPlayTheSource)
{
    installTool("exit 0\n");
    for (const bool playable : {true, false}) {
        std::filesystem::remove(m_directory / "arguments");
        m_stills->playable = playable;
        const auto preview = runToEnd(MediaPipeline::previewSource(source, m_stills));
        EXPECT_EQ(preview == source, playable);
        EXPECT_EQ(hasRun(), !playable);
        EXPECT_EQ(m_stills->judgedFiles.back(), source);
        EXPECT_NE(m_stills->usedOn, std::this_thread::get_id());
    }
}

TEST_F(PreviewSource, FailsWithTheErrorOfThePreviewCopy)
{
    m_stills->playable = false;
    installTool("echo 'no such codec' >&2\nexit 1\n");
    try {
        runToEnd(MediaPipeline::previewSource(source, m_stills));
        ADD_FAILURE() << "it did not fail";
    } catch (const MediaToolError& error) {
        EXPECT_EQ(error, MediaToolError::processFailed("FFmpeg", 1, "no such codec"));
    }
}

TEST_F(PreviewCopy, IsMadeWithEighteenArguments)
{
    installTool("printf copy > \"$destination\"\n");
    const auto copy = runToEnd(MediaPipeline::createPreview(source));
    EXPECT_EQ(arguments(), (std::vector<std::string>{
                               "-hide_banner", "-y", "-i", source.string(), "-map", "0:v:0", "-an", "-vf",
                               "scale=960:-2:force_original_aspect_ratio=decrease,format=yuv420p", "-c:v",
                               "h264_videotoolbox", "-allow_sw", "1", "-b:v", "2M", "-movflags", "+faststart",
                               copy.string()}));
    EXPECT_EQ(contentOf(copy), "copy");
}

TEST_F(PreviewCopy, IsANewFileInTheTemporaryFolderEachTime)
{
    installTool("printf copy > \"$destination\"\n");
    const auto one = runToEnd(MediaPipeline::createPreview(source));
    const auto two = runToEnd(MediaPipeline::createPreview(source));
    EXPECT_NE(one, two);
    for (const auto& copy : {one, two}) {
        EXPECT_EQ(copy.parent_path(), m_temporary / ("Stackreel-" + std::to_string(::geteuid())));
        EXPECT_TRUE(isUpperCaseUuid(copy.stem())) << copy;
        EXPECT_EQ(copy.extension(), ".mp4");
        EXPECT_TRUE(std::filesystem::exists(copy));
    }
}

TEST_F(PreviewCopy, ReportsAFailedRunAndKeepsThePartialFile)
{
    struct Row {
        const char* script;
        int status;
        const char* description;
    };
    const Row rows[] = {
        {"printf half > \"$destination\"\nexit 1\n", 1, "FFmpeg could not process this video."},
        {"printf half > \"$destination\"\necho one >&2\necho two >&2\nexit 234\n", 234, "one\ntwo"},
        {"printf half > \"$destination\"\nkill -KILL $$\n", 9,
         "FFmpeg could not process this video. The system ended it, probably because memory ran out. Close "
         "other programs and try again."},
    };
    for (const Row& row : rows) {
        installTool(row.script);
        try {
            runToEnd(MediaPipeline::createPreview(source));
            ADD_FAILURE() << "it did not fail";
        } catch (const MediaToolError& error) {
            const auto failed = std::get<MediaToolError::ProcessFailed>(error.value());
            EXPECT_EQ(failed.tool, "FFmpeg");
            EXPECT_EQ(failed.status, row.status);
            EXPECT_STREQ(error.what(), row.description);
        }
        EXPECT_EQ(contentOf(arguments().back()), "half");
    }
}

TEST_F(PreviewCopy, DoesNotKeepThePartialFileOnAFullDisk)
{
    installTool("printf half > \"$destination\"\necho 'No space left on device' >&2\nexit 228\n");
    ScopedSystemCalls calls;
    calls->fallocate = [](int, int, off_t, off_t) {
        errno = ENOSPC;
        return -1;
    };
    EXPECT_THROW(runToEnd(MediaPipeline::createPreview(source)), MediaToolError);
    EXPECT_FALSE(std::filesystem::exists(arguments().back()));
}

TEST_F(PreviewCopy, FailsWithoutTheTool)
{
    if (std::filesystem::exists("/usr/local/bin/ffmpeg") ||
        std::filesystem::exists("/opt/homebrew/bin/ffmpeg"))
        GTEST_SKIP() << "this system has the tool in a folder that the search includes";
    Awaited<std::filesystem::path> copy(MediaPipeline::createPreview(source));
    EXPECT_FALSE(copy.hasEnded()) << "the search runs on another thread";
    try {
        copy.result();
        ADD_FAILURE() << "it did not fail";
    } catch (const MediaToolError& error) {
        EXPECT_EQ(error, MediaToolError::toolMissing("ffmpeg"));
    }
    EXPECT_EQ(m_temporary.names(), std::vector<std::string>()) << "no folder is made without the tool";
}

TEST_F(PreviewCopy, FailsWhenItsFolderCannotBeCreated)
{
    installTool("exit 0\n");
    const ScopedEnvironment place("TMPDIR",
                                  m_temporary.write("Stackreel-" + std::to_string(::geteuid()), ""));
    EXPECT_THROW(runToEnd(MediaPipeline::createPreview(source)), SystemError);
    EXPECT_FALSE(hasRun());
}

TEST_F(PreviewCopy, CanBeCancelled)
{
    installWaitingTool();
    std::stop_source stop;
    Awaited<std::filesystem::path> copy(MediaPipeline::createPreview(source, stop.get_token()));
    ASSERT_TRUE(eventually([this] { return isWaiting(); }));
    ASSERT_TRUE(std::filesystem::exists(arguments().back()));
    stop.request_stop();
    EXPECT_THROW(copy.result(), CancellationError);
    EXPECT_FALSE(std::filesystem::exists(arguments().back())) << "nobody would use it";
}

} // namespace stackreel
