#include "media/ProbeDocument.h"
#include "media/ProcessRunner.h"
#include "tests/media/RunnerTest.h"
#include "tests/support/ChildReport.h"
#include "tests/support/ScopedWorkingDirectory.h"

#include <ctime>

namespace stackreel
{

namespace
{

const char* const fakeTool = R"sh(#!/bin/sh
here=${0%/*}
printf '%s\n' "$@" > "$here/arguments"
cat "$here/report"
cat "$here/error-text" >&2
exit "$(cat "$here/status")"
)sh";

const char* const goodReport =
    R"({"streams": [{"codec_type": "video", "codec_name": "h264", "width": 1920, "height": 1080, "duration": "12.5"},
                    {"codec_type": "audio", "codec_name": "aac"}]})";

/// Installs the media layer in a temporary folder with fake tools.
class InstalledTest : public RunnerTest
{
protected:
    InstalledTest()
    {
        std::filesystem::create_directories(m_directory / "bin");
        std::error_code error;
        std::filesystem::create_hard_link(STACKREEL_MEDIA_HOST, host(), error);
        if (error)
            std::filesystem::copy_file(STACKREEL_MEDIA_HOST, host());
    }

    std::filesystem::path host() const { return m_directory / "bin/media-host"; }

    ProcessOutput runHost(const std::vector<std::string>& arguments) const
    {
        return runToEnd(ProcessRunner::run(host(), arguments));
    }
    std::string outputOfHost(const std::vector<std::string>& arguments) const
    {
        const ProcessOutput output = runHost(arguments);
        EXPECT_EQ(output.status, 0) << output.standardError;
        return output.standardOutput;
    }

    void installProbe(int status, const std::string& report, const std::string& errorText = "") const
    {
        m_directory.writeExecutable("lib/stackreel/ffprobe", fakeTool);
        m_directory.write("lib/stackreel/report", report);
        m_directory.write("lib/stackreel/error-text", errorText);
        m_directory.write("lib/stackreel/status", std::to_string(status));
    }
    std::string probe(const std::string& source = "/clips/some clip.mov") const
    {
        return outputOfHost({"probe", source});
    }
};

using InspectTest = InstalledTest;
using LocateFromAProgramTest = InstalledTest;

} // namespace

TEST_F(InspectTest, ReturnsTheFactsOfAValidReport)
{
    installProbe(0, goodReport, "a harmless warning\n");
    EXPECT_EQ(probe(), "1920x1080 0 12.5 h264 aac\n");
}

TEST_F(InspectTest, RunsFfprobeWithSevenArguments)
{
    installProbe(0, goodReport);
    probe("/clips/-Beach 'day' 東京 100%.MOV");
    EXPECT_EQ(contentOf(m_directory / "lib/stackreel/arguments"),
              "-v\nerror\n-show_streams\n-show_format\n-of\njson\n/clips/-Beach 'day' 東京 100%.MOV\n");
}

TEST_F(InspectTest, ThrowsForAFailedRunWhateverItWrote)
{
    installProbe(1, goodReport, "moov atom not found\n");
    EXPECT_EQ(probe(), "ffprobe 1 MediaToolError: moov atom not found\n");
    installProbe(1, "not JSON", "");
    EXPECT_EQ(probe(), "ffprobe 1 MediaToolError: ffprobe could not process this video.\n");
    installProbe(255, "", "first\n\nsecond\n");
    EXPECT_EQ(probe(), "ffprobe 255 MediaToolError: first\nsecond\n");
}

TEST_F(InspectTest, ThrowsWhenASignalEndsTheProbe)
{
    m_directory.writeExecutable("lib/stackreel/ffprobe", "#!/bin/sh\nkill -KILL $$\n");
    EXPECT_EQ(probe(),
              "ffprobe 9 MediaToolError: ffprobe could not process this video. The system ended it, probably "
              "because memory ran out. Close other programs and try again.\n");
}

TEST_F(InspectTest, ThrowsForABadReportBeforeLookingForVideo)
{
    installProbe(0, R"({"streams": [{"codec_type": "audio", "tags": {"rotate": 90}}]})");
    EXPECT_EQ(probe(),
              "DecodingError: The video details could not be read: streams[0].tags.rotate is not a text.\n");
    installProbe(0, "");
    EXPECT_EQ(probe(), "DecodingError: The video details could not be read: the report is not valid JSON.\n");
}

TEST_F(InspectTest, ThrowsForMissingVideoBeforeAVerticalPicture)
{
    installProbe(0, R"({"streams": [{"codec_type": "video", "width": 100}]})");
    EXPECT_EQ(probe(), "MediaToolError: This file does not contain a video stream.\n");
    installProbe(0, R"({"streams": [{"codec_type": "video", "width": 1080, "height": 1920}]})");
    EXPECT_EQ(
        probe(),
        "MediaToolError: Choose a horizontal video. Stackreel only stacks crops from horizontal sources.\n");
}

TEST_F(InspectTest, ThrowsWhenTheProbeCannotBeLaunched)
{
    m_directory.writeExecutable("lib/stackreel/ffprobe", "no interpreter line\n");
    EXPECT_EQ(probe(), "SystemError: 8\n");
}

TEST_F(InspectTest, SearchesForItsToolOnAnotherThread)
{
    const ScopedWorkingDirectory inside(m_directory.path());
    EXPECT_EQ(outputOfHost({"search", "/clips/some clip.mov"}).substr(0, 7), "later: ");
}

TEST_F(InspectTest, DecodesALongReportOnAnotherThread)
{
    std::string report(goodReport);
    std::string numbers = R"({"long": [0)";
    for (int number = 0; number < 4'000'000; ++number)
        numbers += ",0";
    report.replace(0, 1, numbers + "], ");
    const auto processorTime = [] { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; };
    const double before = processorTime();
    ProbeDocument::decode(report);
    const double decoding = processorTime() - before;
    installProbe(0, report);
    EXPECT_LT(std::stod(outputOfHost({"cost", "/clips/some clip.mov"})), decoding / 2);
}

TEST_F(LocateFromAProgramTest, FindsABundledToolFromAnyWorkingDirectory)
{
    const auto tool = m_directory.writeExecutable("lib/stackreel/ffmpeg", "");
    m_directory.writeExecutable("third_party/ffmpeg/bin/ffmpeg", "");
    EXPECT_EQ(outputOfHost({"locate", "ffmpeg", "/", m_directory.path()}),
              tool.string() + "\n" + tool.string() + "\n");
    std::filesystem::create_symlink(host(), m_directory / "link");
    const auto linked = runToEnd(ProcessRunner::run(m_directory / "link", {"locate", "ffmpeg", "/"}));
    EXPECT_EQ(linked.standardOutput, tool.string() + "\n") << "through a symbolic link";
}

TEST_F(LocateFromAProgramTest, ReadsTheWorkingDirectoryAtEachCall)
{
    const auto one = m_directory.writeExecutable("one/third_party/ffmpeg/bin/ffprobe", "");
    const auto two = m_directory.writeExecutable("two/third_party/ffmpeg/bin/ffprobe", "");
    std::filesystem::create_directories(m_directory / "two/sub");
    EXPECT_EQ(outputOfHost(
                  {"locate", "ffprobe", m_directory / "one", m_directory / "two", m_directory / "two/sub"}),
              one.string() + "\n" + two.string() + "\n" + two.string() + "\n");
}

TEST_F(LocateFromAProgramTest, NeverSearchesThePathVariable)
{
    const auto onPath = m_directory.writeExecutable("path/ffprobe", "");
    const ScopedEnvironment path("PATH", m_directory / "path");
    EXPECT_NE(outputOfHost({"locate", "ffprobe", "/"}), onPath.string() + "\n");
}

TEST_F(LocateFromAProgramTest, HandlesADeletedWorkingDirectory)
{
    const auto tool = m_directory.writeExecutable("lib/stackreel/ffmpeg", "");
    std::filesystem::create_directories(m_directory / "deleted");
    EXPECT_EQ(outputOfHost({"locate", "ffmpeg", m_directory / "deleted"}), tool.string() + "\n");
}

TEST_F(InstalledTest, RunsChildrenWhenItsStandardDescriptorsAreClosed)
{
    struct Row {
        const char* closed;
        const char* childHas;
    };
    // The columns are the standard streams that are closed in the program, and those that its child has. The
    // two outputs of the child are always open, because they are captured.
    const Row rows[] = {{"0", "1\n2\n"},  {"1", "0\n1\n2\n"},  {"2", "0\n1\n2\n"},
                        {"01", "1\n2\n"}, {"12", "0\n1\n2\n"}, {"012", "1\n2\n"}};
    for (const Row& row : rows) {
        const auto result = m_directory / "result";
        EXPECT_EQ(runHost({"closed", result, testChild(), row.closed}).status, 0) << row.closed;
        EXPECT_EQ(contentOf(result), std::string(row.childHas) + "3\nout of 3\nerror of 3\n") << row.closed;
    }
}

} // namespace stackreel
