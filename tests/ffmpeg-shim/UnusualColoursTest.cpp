// Exports sources that are rare, or whose tags say little, by every FFmpeg that is found.
#include "tests/ffmpeg-shim/ColourPatches.h"
#include "tests/ffmpeg-shim/InstalledFFmpegs.h"
#include "tests/ffmpeg-shim/Invocation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>

namespace stackreel::shim
{

namespace
{

namespace fs = std::filesystem;

const std::string bt709Tags = ":color_primaries=bt709:color_trc=bt709:colorspace=";

const SourceKind hdrKind{.name = "PQ",
                         .pixelFormat = "yuv420p10le",
                         .bits = 10,
                         .luma = bt2020Luma,
                         .transfer = Transfer::pq,
                         .primaries = bt2020Primaries,
                         .tags = "range=tv:color_trc=smpte2084"};

SourceKind hdr(const char* name, Transfer transfer, const Primaries& primaries, const char* tags)
{
    SourceKind kind = hdrKind;
    kind.name = name;
    kind.transfer = transfer;
    kind.primaries = primaries;
    kind.tags = tags;
    return kind;
}

/// High dynamic range of which only the transfer characteristics are stated.
const std::vector<SourceKind> sparselyTagged{
    hdrKind, hdr("HLG", Transfer::hlg, bt2020Primaries, "range=tv:color_trc=arib-std-b67")};

const std::vector<SourceKind> otherPrimaries{
    hdr("PQ with P3", Transfer::pq, p3Primaries,
        "range=tv:color_primaries=smpte432:color_trc=smpte2084:colorspace=bt2020nc"),
    hdr("HLG with P3", Transfer::hlg, p3Primaries,
        "range=tv:color_primaries=smpte432:color_trc=arib-std-b67:colorspace=bt2020nc"),
    hdr("PQ with BT.709", Transfer::pq, bt709Primaries,
        "range=tv:color_primaries=bt709:color_trc=smpte2084:colorspace=bt2020nc")};

const std::vector<SourceKind> formats{
    {.name = "YCgCo",
     .pixelFormat = "yuv444p",
     .chromaShiftX = 0,
     .chromaShiftY = 0,
     .isYcgco = true,
     .tags = "range=tv:color_primaries=bt709:color_trc=bt709:colorspace=ycgco"},
    {.name = "YCgCo, full range",
     .pixelFormat = "yuv444p",
     .chromaShiftX = 0,
     .chromaShiftY = 0,
     .isYcgco = true,
     .fullRange = true,
     .tags = "range=pc:color_primaries=bt709:color_trc=bt709:colorspace=ycgco"},
    {.name = "grey", .pixelFormat = "gray", .isGrey = true, .fullRange = true},
    {.name = "grey, limited range", .pixelFormat = "gray", .isGrey = true, .tags = "range=tv"},
};

class UnusualColoursTest : public testing::Test
{
protected:
    fs::path source(const SourceKind& kind) const { return patchesFile(m_folder.path(), kind); }

    /// Exports the upper and the lower half of a picture of the given size on top of each other.
    Outcome exported(const InstalledFFmpeg& ffmpeg, const fs::path& file,
                     const fs::path& front = shimProgram("ffmpeg"), int width = 320, int height = 180) const
    {
        const std::string crop =
            "crop=w=" + std::to_string(width) + ":h=" + std::to_string(height / 2) + ":x=0:y=";
        const auto half = [&](const std::string& name, int top) {
            return "[" + name + "Source]" + crop + std::to_string(top) +
                   ",scale=320:90:flags=bicubic,setsar=1,setpts=PTS-STARTPTS[" + name + "]";
        };
        const std::string graph = "[0:v:0]split=2[topSource][bottomSource];" + half("top", 0) + ";" +
                                  half("bottom", height / 2) +
                                  ";[top][bottom]vstack=inputs=2,format=yuv420p[video]";
        return run({front,
                    {"-hide_banner", "-y", "-i", file.string(), "-t", "0.300", "-filter_complex", graph,
                     "-map", "[video]", "-c:v", "h264_videotoolbox", "-allow_sw", "1", "-b:v", "12M", "-an",
                     m_result.string()},
                    {{"PATH", ffmpeg.path}, {"STACKREEL_REPORT_CHANGES", "1"}}});
    }

    /// Compares the result with the expected colours of the first `count` patches.
    void expectColours(const SourceKind& kind, double limit, std::size_t count) const
    {
        const std::vector<Triple> measured = measuredPatches(m_result, 320, 180);
        const std::vector<Triple> patches = patchesOf(kind);
        ASSERT_EQ(measured.size(), patches.size());
        double largest = 0;
        for (std::size_t index = 0; index < count; ++index) {
            const double difference =
                differenceOf(expectedLab(patches[index], kind), exportedLab(measured[index]));
            EXPECT_LE(difference, limit)
                << "patch " << index << ": " << testing::PrintToString(measured[index]);
            largest = std::max(largest, difference);
        }
        std::cout << kind.name << ": at most " << largest << '\n';
    }

    void expectExports(const std::vector<SourceKind>& kinds, double limit, std::size_t count = 32,
                       const fs::path& front = shimProgram("ffmpeg")) const
    {
        for (const InstalledFFmpeg& ffmpeg : m_ffmpegs.all())
            for (const SourceKind& kind : kinds) {
                SCOPED_TRACE(ffmpeg.version + ", " + kind.name);
                const Outcome outcome = exported(ffmpeg, source(kind), front);
                ASSERT_EQ(outcome.exitStatus(), 0) << outcome.errors;
                expectColours(kind, limit, count);
            }
    }

    /// The luma of the result.
    std::string pictures() const
    {
        const Outcome outcome =
            run({shimProgram("ffmpeg"),
                 {"-v", "error", "-i", m_result.string(), "-f", "rawvideo", "-pix_fmt", "gray", "-"},
                 {}});
        return outcome.output;
    }

    TemporaryDirectory m_folder;
    fs::path m_result = m_folder / "result.mp4";
    InstalledFFmpegs m_ffmpegs;
};

TEST_F(UnusualColoursTest, AreConvertedFromHighDynamicRangeWithFewTags)
{
    expectExports(sparselyTagged, 2);
}

// Colours that BT.709 does not have are not compared: zimg clips them differently.
TEST_F(UnusualColoursTest, AreConvertedByZscaleFromHighDynamicRangeWithFewTags)
{
    fs::create_directories(m_folder / "bare");
    fs::copy_file(shimProgram("ffmpeg"), m_folder / "bare" / "ffmpeg");
    expectExports(sparselyTagged, 4, 28, m_folder / "bare" / "ffmpeg");
}

TEST_F(UnusualColoursTest, AreConvertedFromHighDynamicRangeWithOtherPrimaries)
{
    expectExports(otherPrimaries, 2);
}

TEST_F(UnusualColoursTest, AreConvertedFromYcgcoAndGrey)
{
    expectExports(formats, 2);
}

/// Runs FFmpeg on a file.
fs::path made(const fs::path& file, std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), {"-v", "error", "-y"});
    arguments.push_back(file.string());
    const Outcome outcome = run({shimProgram("ffmpeg"), arguments, {}});
    EXPECT_EQ(outcome.exitStatus(), 0) << outcome.errors;
    return file;
}

TEST_F(UnusualColoursTest, AreConvertedFromInterleavedChroma)
{
    const SourceKind kind{.name = "BT.601 without tags", .pixelFormat = "yuv420p", .luma = bt601Luma};
    const fs::path file = made(m_folder / "interleaved.nut",
                               {"-i", source(kind).string(), "-pix_fmt", "nv12", "-c:v", "rawvideo"});
    for (const InstalledFFmpeg& ffmpeg : m_ffmpegs.all()) {
        SCOPED_TRACE(ffmpeg.version);
        ASSERT_EQ(exported(ffmpeg, file).exitStatus(), 0);
        expectColours(kind, 2, 32);
    }
}

TEST_F(UnusualColoursTest, OfAnUnknownMatrixAreExportedAndReported)
{
    for (const char* matrix : {"ictcp", "chroma-derived-nc", "smpte2085", "bt2020c"}) {
        const std::string colours = "range=tv" + bt709Tags + matrix;
        const SourceKind kind{.name = matrix, .pixelFormat = "yuv420p", .tags = colours.c_str()};
        for (const InstalledFFmpeg& ffmpeg : m_ffmpegs.all()) {
            SCOPED_TRACE(ffmpeg.version + ", " + matrix);
            const Outcome outcome = exported(ffmpeg, source(kind));
            EXPECT_EQ(outcome.exitStatus(), 0) << outcome.errors;
            EXPECT_NE(outcome.errors.find("[stackreel] matrix=unconverted: "), std::string::npos);
        }
    }
}

// The expected pictures are deinterlaced upright, and then turned as FFmpeg turns the rotated file.
TEST_F(UnusualColoursTest, AreOfOneMomentFromARotatedInterlacedSource)
{
    const fs::path interlaced =
        made(m_folder / "interlaced.mp4",
             {"-f", "lavfi", "-i", "nullsrc=size=320x180:rate=20:duration=1,format=gray", "-vf",
              "geq=lum='235*mod(floor((X+16*N)/40),2)',format=yuv420p,tinterlace=interleave_top,setfield=tff",
              "-c:v", "libx264", "-qp", "4", "-flags", "+ildct+ilme"});
    const std::string bwdif = "bwdif=mode=send_frame:parity=auto:deint=interlaced,";
    const std::pair<std::string, std::string> turns[] = {
        {"90", "transpose=cclock"}, {"180", "hflip,vflip"}, {"270", "transpose=clock"}};
    for (const InstalledFFmpeg& ffmpeg : m_ffmpegs.all())
        for (const auto& [degrees, filter] : turns) {
            SCOPED_TRACE(ffmpeg.version + ", " + degrees);
            const fs::path rotated = made(m_folder / "rotated.mp4", {"-i", interlaced.string(), "-c", "copy",
                                                                     "-metadata:s:v", "rotate=" + degrees});
            const fs::path turned = made(m_folder / "turned.mkv",
                                         {"-i", interlaced.string(), "-vf", bwdif + filter, "-c:v", "ffv1"});
            const int width = degrees == "180" ? 320 : 180;
            const int height = degrees == "180" ? 180 : 320;
            ASSERT_EQ(exported(ffmpeg, turned, shimProgram("ffmpeg"), width, height).exitStatus(), 0);
            const std::string expected = pictures();
            ASSERT_EQ(exported(ffmpeg, rotated, shimProgram("ffmpeg"), width, height).exitStatus(), 0);
            EXPECT_FALSE(expected.empty());
            EXPECT_TRUE(pictures() == expected) << "the pictures differ";
        }
}

} // namespace

} // namespace stackreel::shim
