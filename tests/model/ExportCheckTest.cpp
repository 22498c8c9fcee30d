#include "model/ExportCheck.h"

#include "model/ExportError.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace stackreel
{

namespace
{

ProbeStream video(const std::string& duration)
{
    ProbeStream stream;
    stream.codecType = "video";
    stream.codecName = "h264";
    stream.width = 1080;
    stream.height = 1920;
    stream.duration = duration;
    stream.frames = "600";
    return stream;
}

ProbeStream audio(const std::string& duration)
{
    ProbeStream stream;
    stream.codecType = "audio";
    stream.codecName = "aac";
    stream.duration = duration;
    return stream;
}

const ExportExpectation tenSeconds = {
    .size = {.width = 1080, .height = 1920}, .audio = true, .lengthSeconds = 10};

ProbeDocument goodReport()
{
    return {.streams = {video("10.000000"), audio("10.020000")},
            .format = ProbeFormat{.duration = "10.020000"}};
}

/// The error when a report is checked; empty if it is accepted.
std::string errorFor(const ProbeDocument& report, const ExportExpectation& expected)
{
    try {
        requireExpected(report, expected);
    } catch (const ExportError& error) {
        return error.what();
    }
    return "";
}

TEST(ExportCheck, AcceptsAFileThatMeetsTheExpectation)
{
    EXPECT_EQ(errorFor(goodReport(), tenSeconds), "");
    ProbeDocument other = goodReport();
    std::swap(other.streams[0], other.streams[1]);
    other.streams[1].sideDataList = std::vector<ProbeSideData>{{.rotation = 0}, {.rotation = std::nullopt}};
    other.streams[1].frames.reset();
    EXPECT_EQ(errorFor(other, tenSeconds), "");
}

struct Flaw {
    std::function<void(ProbeDocument&)> make;
    std::string error;
};

const std::vector<Flaw> flaws = {
    {[](ProbeDocument& report) { report.streams.clear(); },
     "it has no picture. The source has none in the chosen range."},
    {[](ProbeDocument& report) { report.streams.erase(report.streams.begin()); },
     "it has no picture. The source has none in the chosen range."},
    {[](ProbeDocument& report) { report.streams[0].codecName = "hevc"; },
     "its picture is coded as hevc, not h264."},
    {[](ProbeDocument& report) { report.streams[0].codecName.reset(); },
     "its picture is coded as something unknown, not h264."},
    {[](ProbeDocument& report) { report.streams[0].height = 1918; },
     "its picture is 1080 × 1918, not 1080 × 1920."},
    {[](ProbeDocument& report) { report.streams[0].width.reset(); },
     "its picture is 0 × 1920, not 1080 × 1920."},
    {[](ProbeDocument& report) {
         report.streams[0].sideDataList = std::vector<ProbeSideData>{{.rotation = -90}};
     },
     "its picture is marked as turned."},
    {[](ProbeDocument& report) { report.streams.pop_back(); }, "its sound is missing."},
    {[](ProbeDocument& report) { report.streams[1].codecName = "mp3"; },
     "its sound is coded as mp3, not aac."},
    {[](ProbeDocument& report) { report.streams[0].duration = "4.970000"; },
     "it lasts 4.97 s instead of 10.00 s. The source may be damaged, or its picture ends there: choose an "
     "earlier end."},
    {[](ProbeDocument& report) { report.streams[0].duration = "12"; },
     "it lasts 12.00 s instead of 10.00 s. The time stamps of the source may be damaged."},
    {[](ProbeDocument& report) {
         report.streams[0].duration.reset();
         report.format.reset();
     },
     "its length is unknown."},
    {[](ProbeDocument& report) {
         report.streams[0].duration = "N/A";
         report.format->duration = "N/A";
     },
     "its length is unknown."},
};

TEST(ExportCheck, ReportsEachDifference)
{
    for (const Flaw& flaw : flaws) {
        ProbeDocument report = goodReport();
        flaw.make(report);
        EXPECT_EQ(errorFor(report, tenSeconds),
                  "The export did not become what was asked for: " + flaw.error);
    }
}

TEST(ExportCheck, ReportsUnwantedSound)
{
    ExportExpectation silent = tenSeconds;
    silent.audio = false;
    EXPECT_EQ(errorFor(goodReport(), silent), "The export did not become what was asked for: it has sound.");
}

bool isAccepted(double length, std::optional<double> asked, const std::optional<std::string>& frames)
{
    ExportExpectation expected = tenSeconds;
    expected.lengthSeconds = asked;
    ProbeDocument report = goodReport();
    report.streams[0].duration = std::to_string(length);
    report.streams[0].frames = frames;
    return errorFor(report, expected).empty();
}

TEST(ExportCheck, AcceptsALengthWithinHalfASecondAndTwoFrames)
{
    EXPECT_TRUE(isAccepted(9.5, 10, std::nullopt));
    EXPECT_TRUE(isAccepted(10.5, 10, std::nullopt));
    EXPECT_FALSE(isAccepted(9.4, 10, std::nullopt));
    EXPECT_FALSE(isAccepted(10.6, 10, std::nullopt));
    // The frame rates are one frame per second and one per ten seconds.
    EXPECT_TRUE(isAccepted(8, 9.6, "8"));
    EXPECT_TRUE(isAccepted(20, 35, "2"));
    EXPECT_FALSE(isAccepted(20, 45, "2"));
    // The export of a truncated source has few frames, but each of them is short.
    EXPECT_FALSE(isAccepted(1.0 / 30, 10, "1"));
    EXPECT_FALSE(isAccepted(9.4, 10, "0"));
}

TEST(ExportCheck, AcceptsAnyLengthWhereThatOfTheSourceIsUnknown)
{
    EXPECT_TRUE(isAccepted(3, std::nullopt, "90"));
}

TEST(ExportCheck, RejectsAShortExportThatIsNearlyEmpty)
{
    EXPECT_TRUE(isAccepted(0.25, 0.25, "15"));
    EXPECT_TRUE(isAccepted(0.2, 0.25, "6"));
    EXPECT_FALSE(isAccepted(0.05, 0.25, "3"));
}

TEST(ExportCheck, AcceptsMissingSoundWhereTheSourceHasNoneInTheRange)
{
    ProbeDocument report = goodReport();
    report.streams.pop_back();
    ExportExpectation expected = tenSeconds;
    expected.audioMayBeMissing = true;
    EXPECT_EQ(errorFor(report, expected), "");
    EXPECT_EQ(errorFor(goodReport(), expected), "");
}

ExportRequest requestFor(double duration, bool sound)
{
    ExportRequest request;
    request.media = {.width = 1920,
                     .height = 1080,
                     .rotation = 0,
                     .duration = duration,
                     .videoCodec = "h264",
                     .audioCodec = sound ? std::optional<std::string>("aac") : std::nullopt};
    request.trimEnd = duration;
    return request;
}

TEST(ExportExpectation, FollowsFromTheRequest)
{
    ExportRequest request = requestFor(10, true);
    request.settings.aspect = OutputAspect::feed;
    request.trimStart = 2;
    request.trimEnd = 7.5;
    const auto expected = ExportExpectation::of(request);
    EXPECT_EQ(expected.size, (PixelSize{.width = 1080, .height = 1350}));
    EXPECT_TRUE(expected.audio);
    EXPECT_EQ(expected.lengthSeconds, 5.5);

    request.settings.includeAudio = false;
    EXPECT_FALSE(ExportExpectation::of(request).audio);
    EXPECT_FALSE(ExportExpectation::of(requestFor(10, false)).audio);
}

TEST(ExportExpectation, LengthIsThatOfASourceShorterThanTheShortestExport)
{
    EXPECT_EQ(ExportExpectation::of(requestFor(0.04, false)).lengthSeconds, 0.04);
}

TEST(ExportExpectation, HasNoLengthWhereThatOfTheSourceIsUnknown)
{
    const ExportRequest request = requestFor(0, true);
    const auto expected = ExportExpectation::of(request);
    EXPECT_EQ(expected.lengthSeconds, std::nullopt);
    EXPECT_EQ(expected.within(request, {.pictureEnd = 5, .end = 5}).lengthSeconds, std::nullopt);
}

TEST(ExportExpectation, IsAsShortAsThePictureOfASourceThatIsWhole)
{
    ExportRequest request = requestFor(10, true);
    request.trimStart = 2;
    const auto expected = ExportExpectation::of(request);
    const auto lengthWith = [&](double pictureEnd, double end) {
        return expected.within(request, {.pictureEnd = pictureEnd, .end = end, .hasSound = true})
            .lengthSeconds;
    };
    EXPECT_EQ(lengthWith(6, 9.9), 4);
    EXPECT_EQ(lengthWith(10, 10), 8);
    EXPECT_EQ(lengthWith(20, 20), 8);
    EXPECT_EQ(lengthWith(1, 10), 0);
    EXPECT_EQ(lengthWith(6, 6), 8) << "it was cut short";
}

/// As in Matroska, whose stated length counts from 0.
TEST(ExportExpectation, TakesASourceThatStartsLateAsWhole)
{
    const ExportRequest request = requestFor(10, true);
    const auto lengthWith = [&](double start) {
        return ExportExpectation::of(request)
            .within(request, {.pictureEnd = 5, .end = 5, .start = start, .hasSound = true})
            .lengthSeconds;
    };
    EXPECT_EQ(lengthWith(5), 5);
    EXPECT_EQ(lengthWith(0), 10) << "it was cut short";
}

TEST(ExportExpectation, LetsSoundBeMissingWhereTheRangeHasNone)
{
    const ExportRequest request = requestFor(10, true);
    const auto expected = ExportExpectation::of(request);
    EXPECT_TRUE(expected.within(request, {.pictureEnd = 10, .end = 10, .hasSound = false}).audioMayBeMissing);
    EXPECT_FALSE(expected.within(request, {.pictureEnd = 10, .end = 10, .hasSound = true}).audioMayBeMissing);
}

} // namespace

} // namespace stackreel
