#include "model/SourceExport.h"

#include "media/CancellationError.h"
#include "media/MediaToolError.h"
#include "model/ExportError.h"
#include "model/Recipe.h"
#include "system/SystemError.h"
#include "tests/model/FakeToolTest.h"
#include "tests/support/Awaited.h"

namespace stackreel
{

namespace
{

class SourceExportTest : public FakeToolTest
{
protected:
    std::string exportedContent() const { return contentOf(request.output); }

    const ExportRequest request =
        landscapeRequest("/clips/-Beach 'day' 東京 100%.MOV", m_directory / "out.mp4");
    std::stop_source m_stop;
};

} // namespace

TEST_F(SourceExportTest, RunsTheToolWithTheArgumentsOfTheRequest)
{
    installTool("printf whole > \"$destination\"\n");
    EXPECT_EQ(runToEnd(exportSource(request)).streams.size(), 1U);
    EXPECT_EQ(arguments(), ExportCommandBuilder::build(request).arguments);
    EXPECT_EQ(exportedContent(), "whole");
}

TEST_F(SourceExportTest, GivesTheFrontTheRecipeAndACallerThatReadsAlongItsChanges)
{
    installTool("printf '%s\\n%s' \"$STACKREEL_RECIPE\" \"$STACKREEL_REPORT_CHANGES\" > \"$destination\"\n");
    runToEnd(exportSource(request));
    EXPECT_EQ(exportedContent(), Recipe::of(request).json() + "\n");
    runToEnd(exportSource(request, {}, [](const std::filesystem::path&) {}));
    EXPECT_EQ(exportedContent(), Recipe::of(request).json() + "\n1");
}

TEST_F(SourceExportTest, ReportsAFailedRunAndKeepsThePartialFile)
{
    installTool("printf half > \"$destination\"\necho 'Invalid data found' >&2\nexit 69\n");
    try {
        runToEnd(exportSource(request));
        ADD_FAILURE() << "it did not fail";
    } catch (const MediaToolError& error) {
        EXPECT_EQ(error, MediaToolError::processFailed("FFmpeg", 69, "Invalid data found"));
    }
    EXPECT_EQ(exportedContent(), "half");
}

TEST_F(SourceExportTest, SaysWhatEndedAToolThatChecksTheResult)
{
    const std::string killed = "#!/bin/sh\nkill -KILL $$\n";
    const std::string copies = "printf whole > \"$destination\"\n";
    const auto failure = [this] {
        try {
            runToEnd(exportSource(request));
        } catch (const std::exception& error) {
            return std::string(error.what());
        }
        return std::string("none");
    };
    const std::string sentence =
        " could not process this video. The system ended it, probably because memory "
        "ran out. Close other programs and try again.";
    m_directory.writeExecutable("third_party/ffmpeg/bin/ffprobe", killed);
    installTool(copies);
    EXPECT_EQ(failure(), "ffprobe" + sentence);
    m_directory.writeExecutable("third_party/ffmpeg/bin/ffmpeg",
                                "#!/bin/sh\n[ \"$1\" != -nostdin ] || kill -KILL $$\n"
                                "for destination; do :; done\n" +
                                    copies);
    EXPECT_EQ(failure(), "FFmpeg" + sentence);
}

/// FFmpeg catches SIGTERM, writes nothing of it at this log level, and exits with 255.
TEST_F(SourceExportTest, FailsWhenASignalThatFFmpegCatchesEndsTheComparisonOfPictures)
{
    installTool("printf whole > \"$destination\"\n");
    m_directory.writeExecutable("third_party/ffmpeg/bin/ffmpeg",
                                "#!/bin/sh\n[ \"$1\" != -nostdin ] || exit 255\n"
                                "for destination; do :; done\nprintf whole > \"$destination\"\n");
    EXPECT_THROW(runToEnd(exportSource(request)), MediaToolError);
}

TEST_F(SourceExportTest, ThrowsExportErrorWhenOnlyTheSourceHasAFirstPicture)
{
    installTool("printf whole > \"$destination\"\n");
    m_directory.writeExecutable("third_party/ffmpeg/bin/ffmpeg",
                                "#!/bin/sh\nfor destination; do :; done\ncase \"$*\" in\n"
                                "-nostdin*-filter_complex*) ;;\n"
                                "-nostdin*.MOV*) printf picture ;;\n"
                                "-nostdin*) ;;\n"
                                "*) printf whole > \"$destination\" ;;\nesac\n");
    EXPECT_THROW(runToEnd(exportSource(request)), ExportError);
}

TEST_F(SourceExportTest, ReportsAMissingToolAndWritesNothing)
{
    if (std::filesystem::exists("/usr/local/bin/ffmpeg") ||
        std::filesystem::exists("/opt/homebrew/bin/ffmpeg"))
        GTEST_SKIP() << "this system has the tool in a folder that the search includes";
    Awaited<ProbeDocument> exported(exportSource(request));
    EXPECT_FALSE(exported.hasEnded()) << "the search runs on another thread";
    try {
        exported.result();
        ADD_FAILURE() << "it did not fail";
    } catch (const MediaToolError& error) {
        EXPECT_EQ(error, MediaToolError::toolMissing("ffmpeg"));
    }
    EXPECT_FALSE(std::filesystem::exists(request.output));
}

TEST_F(SourceExportTest, ThrowsSystemErrorWhenTheToolCannotBeStarted)
{
    m_directory.writeExecutable("third_party/ffmpeg/bin/ffmpeg", "no program");
    EXPECT_THROW(runToEnd(exportSource(request)), SystemError);
}

TEST_F(SourceExportTest, RunsNothingWhenCancelledBeforeTheStart)
{
    installTool("exit 0\n");
    m_stop.request_stop();
    EXPECT_THROW(runToEnd(exportSource(request, m_stop.get_token())), CancellationError);
    EXPECT_FALSE(hasRun());
}

TEST_F(SourceExportTest, RunsNothingWhenCancelledDuringTheToolSearch)
{
    installTool("exit 0\n");
    Awaited<ProbeDocument> exported(exportSource(request, m_stop.get_token()));
    m_stop.request_stop();
    EXPECT_THROW(exported.result(), CancellationError);
    EXPECT_FALSE(hasRun());
}

TEST_F(SourceExportTest, StopsTheToolWhenCancelledAtItsLaunch)
{
    installWaitingTool();
    const auto stopAtOnce = [this](const std::filesystem::path&) { m_stop.request_stop(); };
    EXPECT_THROW(runToEnd(exportSource(request, m_stop.get_token(), stopAtOnce)), CancellationError);
}

TEST_F(SourceExportTest, StopsTheToolAndKeepsThePartialFileWhenCancelled)
{
    installWaitingTool();
    Awaited<ProbeDocument> exported(exportSource(request, m_stop.get_token()));
    ASSERT_TRUE(eventually([this] { return isWaiting(); }));
    m_stop.request_stop();
    EXPECT_THROW(exported.result(), CancellationError);
    EXPECT_EQ(exportedContent(), "half");
}

TEST_F(SourceExportTest, KeepsTheResultWhenCancelledAfterTheEnd)
{
    installTool("printf whole > \"$destination\"\n");
    Awaited<ProbeDocument> exported(exportSource(request, m_stop.get_token()));
    EXPECT_TRUE(eventually([&] { return exported.hasEnded(); }));
    m_stop.request_stop();
    EXPECT_EQ(exported.result().streams.size(), 1U);
    EXPECT_EQ(exportedContent(), "whole");
}

} // namespace stackreel
