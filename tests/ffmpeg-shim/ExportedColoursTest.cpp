// Exports patches of known colours by every FFmpeg that is found, and compares them with what the standards
// of their sources say.
#include "tests/ffmpeg-shim/ColourPatches.h"
#include "tests/ffmpeg-shim/InstalledFFmpegs.h"
#include "tests/ffmpeg-shim/InterlacedClip.h"
#include "tests/ffmpeg-shim/Invocation.h"
#include "tests/ffmpeg-shim/PatchExport.h"
#include "tests/ffmpeg-shim/SourceKinds.h"

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

class ExportedColoursTest : public testing::Test
{
protected:
    fs::path source(const SourceKind& kind) const { return patchesFile(m_folder.path(), kind); }

    Outcome exported(const InstalledFFmpeg& ffmpeg, const fs::path& file, const std::string& filters,
                     const fs::path& front = shimProgram("ffmpeg")) const
    {
        return run({front, exportArguments(file, filters, m_result), {{"PATH", ffmpeg.path}}});
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
        const Outcome outcome = exported(ffmpeg, source(kind), stackedHalves(kind.width, kind.height, 90));
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
            const Outcome outcome =
                exported(ffmpeg, source(kind), stackedHalves(kind.width, kind.height, 89));
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
            const Outcome outcome = exported(ffmpeg, source(kind), stackedHalves(kind.width, kind.height, 90),
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
        const Outcome outcome = exported(ffmpeg, source(pq), stackedHalves(320, 180, 90), copy / "ffmpeg");
        ASSERT_EQ(outcome.exitStatus(), 0) << outcome.errors;
        expectColours(pq, largestDifference);
    }
}

TEST_F(ExportedColoursTest, AreOfOneMomentFromAnInterlacedSource)
{
    for (const InstalledFFmpeg& ffmpeg : m_ffmpegs.all()) {
        SCOPED_TRACE(ffmpeg.version);
        const auto exportedRoughness = [&](Fields fields, std::size_t count) {
            const auto [width, height] = sizeOf(fields);
            const fs::path file = interlacedClip(m_folder.path(), fields);
            const Outcome outcome = exported(ffmpeg, file, stackedHalves(width, height, height / 2));
            EXPECT_EQ(outcome.exitStatus(), 0) << outcome.errors;
            const std::string pictures =
                tool("ffmpeg", {"-v", "error", "-i", m_result, "-f", "rawvideo", "-pix_fmt", "gray", "-"});
            const auto size = static_cast<std::size_t>(320 * height);
            EXPECT_EQ(pictures.size(), count * size) << "one picture for each of the source";
            return pictures.size() < 2 * size ? 0 : roughness(pictures.substr(size, size), 320);
        };
        const double combed = exportedRoughness(Fields::unmarked, 3);
        const double smooth = exportedRoughness(Fields::topFirst, 3);
        const double dv = exportedRoughness(Fields::dv, 8);
        EXPECT_GT(combed, 40);
        EXPECT_LT(smooth, combed / 5);
        EXPECT_LT(dv, combed / 5);
        std::cout << ffmpeg.version << ": " << combed << " to " << smooth << ", DV " << dv << '\n';
    }
}

} // namespace

} // namespace stackreel::shim
