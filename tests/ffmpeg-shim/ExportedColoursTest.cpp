// Exports patches of known colours by every FFmpeg that is found, and compares them with what the standards
// of their sources say.
#include "tests/ffmpeg-shim/ColourPatches.h"
#include "tests/ffmpeg-shim/InstalledFFmpegs.h"
#include "tests/ffmpeg-shim/Invocation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <iterator>
#include <sstream>

namespace stackreel::shim
{

namespace
{

namespace fs = std::filesystem;

// The largest colour difference (CIEDE2000) of a patch.
constexpr double largestDifference = 2;

const char* const x264 = "libx264";

const SourceKind standardKinds[] = {
    {.name = "BT.709",
     .pixelFormat = "yuv420p",
     .tags = "range=tv:color_primaries=bt709:color_trc=bt709:colorspace=bt709",
     .codec = x264},
    {.name = "BT.709 without tags", .pixelFormat = "yuv420p", .width = 1280, .height = 720},
    {.name = "BT.709, full range",
     .pixelFormat = "yuvj420p",
     .fullRange = true,
     .tags = "range=pc:color_primaries=bt709:color_trc=bt709:colorspace=bt709",
     .codec = x264},
    {.name = "BT.709, 10 bits",
     .pixelFormat = "yuv420p10le",
     .bits = 10,
     .tags = "range=tv:color_primaries=bt709:color_trc=bt709:colorspace=bt709"},
    {.name = "BT.709, 10 bits, full range",
     .pixelFormat = "yuv420p10le",
     .bits = 10,
     .fullRange = true,
     .tags = "range=pc:color_primaries=bt709:color_trc=bt709:colorspace=bt709"},
    {.name = "BT.709, 12 bits, 4:4:4",
     .pixelFormat = "yuv444p12le",
     .bits = 12,
     .chromaShiftX = 0,
     .chromaShiftY = 0,
     .tags = "range=tv:color_primaries=bt709:color_trc=bt709:colorspace=bt709"},
    {.name = "BT.601, 625 lines",
     .pixelFormat = "yuv420p",
     .luma = bt601Luma,
     .primaries = bt601Primaries625,
     .tags = "range=tv:color_primaries=bt470bg:color_trc=smpte170m:colorspace=bt470bg",
     .codec = x264},
    {.name = "BT.601, 625 lines, 4:2:2, 10 bits",
     .pixelFormat = "yuv422p10le",
     .bits = 10,
     .chromaShiftY = 0,
     .luma = bt601Luma,
     .primaries = bt601Primaries625,
     .tags = "range=tv:color_primaries=bt470bg:color_trc=smpte170m:colorspace=bt470bg"},
    {.name = "BT.601, 525 lines",
     .pixelFormat = "yuv420p",
     .luma = bt601Luma,
     .primaries = bt601Primaries525,
     .tags = "range=tv:color_primaries=smpte170m:color_trc=smpte170m:colorspace=smpte170m",
     .codec = x264},
    {.name = "BT.601 without tags", .pixelFormat = "yuv420p", .luma = bt601Luma},
    {.name = "BT.601 without tags, 625 lines",
     .pixelFormat = "yuv420p",
     .luma = bt601Luma,
     .primaries = bt601Primaries625,
     .width = 720,
     .height = 576},
    {.name = "BT.601 without tags, 525 lines",
     .pixelFormat = "yuv420p",
     .luma = bt601Luma,
     .primaries = bt601Primaries525,
     .width = 720,
     .height = 480},
    {.name = "BT.601, full range",
     .pixelFormat = "yuvj420p",
     .luma = bt601Luma,
     .fullRange = true,
     .tags = "range=pc:color_primaries=bt709:color_trc=bt709:colorspace=bt470bg",
     .codec = x264},
    {.name = "SMPTE 240M",
     .pixelFormat = "yuv420p",
     .luma = smpte240Luma,
     .primaries = bt601Primaries525,
     .tags = "range=tv:color_primaries=smpte240m:color_trc=smpte240m:colorspace=smpte240m"},
    {.name = "FCC",
     .pixelFormat = "yuv420p",
     .luma = fccLuma,
     .tags = "range=tv:color_primaries=bt709:color_trc=bt709:colorspace=fcc"},
    {.name = "RGB", .pixelFormat = "gbrp", .chromaShiftX = 0, .chromaShiftY = 0, .isRgb = true},
    {.name = "RGB, 12 bits",
     .pixelFormat = "gbrp12le",
     .bits = 12,
     .chromaShiftX = 0,
     .chromaShiftY = 0,
     .isRgb = true},
    {.name = "gamma 2.2",
     .pixelFormat = "yuv420p",
     .transfer = Transfer::gamma22,
     .tags = "range=tv:color_primaries=bt709:color_trc=bt470m:colorspace=bt709"},
    {.name = "gamma 2.8",
     .pixelFormat = "yuv420p",
     .luma = bt601Luma,
     .transfer = Transfer::gamma28,
     .primaries = bt601Primaries625,
     .tags = "range=tv:color_primaries=bt470bg:color_trc=bt470bg:colorspace=bt470bg"},
    {.name = "P3",
     .pixelFormat = "yuv420p10le",
     .bits = 10,
     .primaries = p3Primaries,
     .tags = "range=tv:color_primaries=smpte432:color_trc=bt709:colorspace=bt709"},
    {.name = "BT.2020",
     .pixelFormat = "yuv420p10le",
     .bits = 10,
     .luma = bt2020Luma,
     .primaries = bt2020Primaries,
     .tags = "range=tv:color_primaries=bt2020:color_trc=bt2020-10:colorspace=bt2020nc"},
};

const SourceKind pq{.name = "PQ",
                    .pixelFormat = "yuv420p10le",
                    .bits = 10,
                    .luma = bt2020Luma,
                    .transfer = Transfer::pq,
                    .primaries = bt2020Primaries,
                    .tags = "range=tv:color_primaries=bt2020:color_trc=smpte2084:colorspace=bt2020nc"};
const SourceKind hlg{.name = "HLG",
                     .pixelFormat = "yuv420p10le",
                     .bits = 10,
                     .luma = bt2020Luma,
                     .transfer = Transfer::hlg,
                     .primaries = bt2020Primaries,
                     .tags = "range=tv:color_primaries=bt2020:color_trc=arib-std-b67:colorspace=bt2020nc"};

std::vector<std::string> words(const std::string& text)
{
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

std::string tool(const std::string& name, const std::vector<std::string>& arguments)
{
    const Outcome outcome = run({shimProgram(name), arguments, {}});
    EXPECT_EQ(outcome.exitStatus(), 0) << testing::PrintToString(arguments) << '\n' << outcome.errors;
    return outcome.output;
}

/// The filter graph of an export that puts the upper and the lower half of the source on top of each other.
std::string graph(int width, int height, int halfHeight)
{
    const std::string crop =
        "crop=w=" + std::to_string(width) + ":h=" + std::to_string(height / 2) + ":x=0:y=";
    const auto half = [&](const std::string& name, int top) {
        return "[" + name + "Source]" + crop + std::to_string(top) +
               ",scale=320:" + std::to_string(halfHeight) + ":flags=bicubic,setsar=1,setpts=PTS-STARTPTS[" +
               name + "]";
    };
    return "[0:v:0]split=2[topSource][bottomSource];" + half("top", 0) + ";" + half("bottom", height / 2) +
           ";[top][bottom]vstack=inputs=2,format=yuv420p[video]";
}

class ExportedColoursTest : public testing::Test
{
protected:
    fs::path source(const SourceKind& kind) const
    {
        fs::path file = m_folder / (std::string(kind.name) + (kind.codec == x264 ? ".mp4" : ".mkv"));
        if (!fs::exists(file))
            makePatches(file, kind);
        return file;
    }

    Outcome exported(const InstalledFFmpeg& ffmpeg, const fs::path& file, const std::string& filters,
                     const fs::path& front = shimProgram("ffmpeg")) const
    {
        std::vector<std::string> arguments{"-hide_banner", "-y", "-ss", "0.000", "-i", file.string()};
        std::ranges::copy(std::vector<std::string>{"-t", "0.300", "-filter_complex", filters},
                          std::back_inserter(arguments));
        std::ranges::copy(
            words("-map [video] -c:v h264_videotoolbox -allow_sw 1 -b:v 12M -movflags +faststart "
                  "-an -metadata:s:v:0 rotate=0"),
            std::back_inserter(arguments));
        arguments.push_back(m_result.string());
        return run({front, arguments, {{"PATH", ffmpeg.path}}});
    }

    /// Compares the result with the expected colours of the first `count` patches, and prints the largest
    /// difference.
    void expectColours(const SourceKind& kind, double limit, int outputHeight = 180,
                       std::size_t count = 32) const
    {
        const std::vector<Triple> measured = measuredPatches(m_result, 320, outputHeight);
        const std::vector<Triple> patches = patchesOf(kind);
        ASSERT_EQ(measured.size(), patches.size());
        double largest = 0;
        for (std::size_t index = 0; index < std::min(count, patches.size()); ++index) {
            const double difference =
                differenceOf(expectedLab(patches[index], kind), exportedLab(measured[index]));
            EXPECT_LE(difference, limit)
                << "patch " << index << ": " << testing::PrintToString(measured[index]);
            largest = std::max(largest, difference);
        }
        std::cout << kind.name << ": at most " << largest << '\n';
    }

    /// The container's and the stream's own tags have to be those of BT.709 with limited range.
    void expectTags() const
    {
        const fs::path stream = m_folder / "stream.h264";
        tool("ffmpeg", {"-v", "error", "-y", "-i", m_result, "-c", "copy", stream});
        std::vector<std::string> query = words(
            "-v error -show_entries stream=pix_fmt,color_range,color_space,color_transfer,color_primaries "
            "-of csv=p=0");
        query.push_back(stream.string());
        EXPECT_EQ(tool("ffprobe", query), "yuv420p,tv,bt709,bt709,bt709\n");
        // ISO/IEC 14496-12, `colr`: primaries, transfer and matrix 1, not the full range.
        EXPECT_NE(contentOf(m_result).find(std::string("colrnclx\0\1\0\1\0\1\0", 15)), std::string::npos);
    }

    void expectExport(const InstalledFFmpeg& ffmpeg, const SourceKind& kind) const
    {
        SCOPED_TRACE(ffmpeg.version + ", " + kind.name);
        const Outcome outcome = exported(ffmpeg, source(kind), graph(kind.width, kind.height, 90));
        ASSERT_EQ(outcome.exitStatus(), 0) << outcome.errors;
        expectColours(kind, largestDifference);
        expectTags();
    }

    TemporaryDirectory m_folder;
    fs::path m_result = m_folder / "result.mp4";
    InstalledFFmpegs m_ffmpegs;
};

TEST_F(ExportedColoursTest, AreBt709FromEverySourceOfStandardDynamicRange)
{
    for (const InstalledFFmpeg& ffmpeg : m_ffmpegs.all()) {
        std::cout << ffmpeg.version << '\n';
        for (const SourceKind& kind : standardKinds)
            expectExport(ffmpeg, kind);
    }
}

TEST_F(ExportedColoursTest, AreToneMappedFromHighDynamicRange)
{
    for (const InstalledFFmpeg& ffmpeg : m_ffmpegs.all()) {
        std::cout << ffmpeg.version << '\n';
        for (const SourceKind& kind : {pq, hlg})
            expectExport(ffmpeg, kind);
    }
}

TEST_F(ExportedColoursTest, AreTheSameInHalvesOfOddHeight)
{
    for (const InstalledFFmpeg& ffmpeg : m_ffmpegs.all())
        for (const SourceKind& kind : {standardKinds[0], standardKinds[2], standardKinds[4], standardKinds[8],
                                       standardKinds[12], pq}) {
            SCOPED_TRACE(ffmpeg.version + ", " + kind.name);
            const Outcome outcome = exported(ffmpeg, source(kind), graph(kind.width, kind.height, 89));
            ASSERT_EQ(outcome.exitStatus(), 0) << outcome.errors;
            expectColours(kind, largestDifference, 178);
            expectTags();
        }
}

// The front finds no tables beside it, as where its folder was copied without them. Colours that BT.709 does
// not have are not compared: zimg clips them differently.
TEST_F(ExportedColoursTest, AreToneMappedByZscaleWithoutTables)
{
    fs::create_directories(m_folder / "bare");
    fs::copy_file(shimProgram("ffmpeg"), m_folder / "bare" / "ffmpeg");
    for (const InstalledFFmpeg& ffmpeg : m_ffmpegs.all())
        for (const SourceKind& kind : {pq, hlg}) {
            SCOPED_TRACE(ffmpeg.version + ", " + kind.name);
            const Outcome outcome = exported(ffmpeg, source(kind), graph(kind.width, kind.height, 90),
                                             m_folder / "bare" / "ffmpeg");
            ASSERT_EQ(outcome.exitStatus(), 0) << outcome.errors;
            expectColours(kind, 4, 180, 28);
            expectTags();
        }
}

TEST_F(ExportedColoursTest, AreFoundInTablesWhosePathHasSpecialCharacters)
{
    const fs::path copy = m_folder / "it's [a], b:c; \\d";
    fs::create_directories(copy);
    fs::copy_file(shimProgram("ffmpeg"), copy / "ffmpeg");
    fs::copy(shimProgram("ffmpeg").parent_path() / "colours", copy / "colours");
    for (const InstalledFFmpeg& ffmpeg : m_ffmpegs.all()) {
        const Outcome outcome = exported(ffmpeg, source(pq), graph(320, 180, 90), copy / "ffmpeg");
        ASSERT_EQ(outcome.exitStatus(), 0) << outcome.errors;
        expectColours(pq, largestDifference);
    }
}

/// The mean difference of neighbouring lines in the luma of one picture.
double roughness(const std::string& luma, std::size_t width)
{
    double sum = 0;
    for (std::size_t index = width; index < luma.size(); ++index)
        sum += std::abs(static_cast<unsigned char>(luma[index]) -
                        static_cast<unsigned char>(luma[index - width]));
    return sum / static_cast<double>(luma.size() - width);
}

TEST_F(ExportedColoursTest, AreOfOneMomentFromAnInterlacedSource)
{
    const auto make = [&](const std::string& name, const std::string& last, const std::string& options) {
        std::vector<std::string> arguments = words("-v error -y -f lavfi -i");
        arguments.push_back(
            "nullsrc=size=320x180:rate=20:duration=1,format=gray,"
            "geq=lum='235*mod(floor((X+16*N)/40),2)',format=yuv420p,tinterlace=interleave_top," +
            last);
        std::ranges::copy(words("-c:v libx264 -qp 4 " + options), std::back_inserter(arguments));
        arguments.push_back((m_folder / name).string());
        tool("ffmpeg", arguments);
        return m_folder / name;
    };
    const fs::path interlaced =
        make("interlaced.mp4", "setfield=tff", "-flags +ildct+ilme -x264-params tff=1");
    const fs::path unmarked = make("unmarked.mp4", "setfield=prog", "");
    for (const InstalledFFmpeg& ffmpeg : m_ffmpegs.all()) {
        SCOPED_TRACE(ffmpeg.version);
        const auto exportedRoughness = [&](const fs::path& file) {
            const Outcome outcome = exported(ffmpeg, file, graph(320, 180, 90));
            EXPECT_EQ(outcome.exitStatus(), 0) << outcome.errors;
            const std::string pictures =
                tool("ffmpeg", {"-v", "error", "-i", m_result, "-f", "rawvideo", "-pix_fmt", "gray", "-"});
            constexpr std::size_t size = 320 * 180;
            EXPECT_EQ(pictures.size(), 6 * size) << "one picture for each of the source";
            return pictures.size() < 2 * size ? 0 : roughness(pictures.substr(size, size), 320);
        };
        const double combed = exportedRoughness(unmarked);
        const double smooth = exportedRoughness(interlaced);
        EXPECT_GT(combed, 40);
        EXPECT_LT(smooth, combed / 5);
        std::cout << ffmpeg.version << ": " << combed << " to " << smooth << '\n';
    }
}

} // namespace

} // namespace stackreel::shim
