// Shows patches of known colours in the player and as thumbnails, and compares them with the export and with
// what the standards of their sources say.
#include "tests/ffmpeg-shim/ColourPatches.h"
#include "tests/ffmpeg-shim/Invocation.h"
#include "tests/ffmpeg-shim/PatchExport.h"
#include "tests/ffmpeg-shim/SourceKinds.h"
#include "tests/player/Previewed.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>

namespace stackreel
{

namespace
{

using shim::SourceKind;
using shim::Triple;

// The largest colour differences (CIEDE2000) of a patch. GStreamer converts R'G'B' with eight bits, rounded
// down.
constexpr double largestFromExport = 2;
constexpr double largestForRgb = 2.5;
constexpr double largestFromStandard = 2.5;

/// The mean R'G'B' of the middle of a patch.
Triple patchIn(const VideoFrame& picture, int patch)
{
    const int wide = picture.width / shim::patchColumns, high = picture.height / shim::patchRows;
    const int left = patch % shim::patchColumns * wide, top = patch / shim::patchColumns * high;
    Triple sum{};
    int count = 0;
    for (int y = top + high / 4; y < top + high * 3 / 4; ++y)
        for (int x = left + wide / 4; x < left + wide * 3 / 4; ++x, ++count) {
            const std::byte* pixel = picture.pixels + y * picture.bytesPerLine + x * 4;
            for (std::size_t index = 0; index < 3; ++index)
                sum[index] += std::to_integer<int>(pixel[2 - index]);
        }
    return {sum[0] / count / 255, sum[1] / count / 255, sum[2] / count / 255};
}

std::vector<Triple> patchesIn(const VideoFrame& picture)
{
    std::vector<Triple> patches;
    if (!picture.pixels)
        return patches;
    for (int patch = 0; patch < shim::patchColumns * shim::patchRows; ++patch)
        patches.push_back(patchIn(picture, patch));
    return patches;
}

class PreviewColoursTest : public testing::Test
{
protected:
    std::vector<Triple> exported(const std::filesystem::path& file, const SourceKind& kind) const
    {
        const auto result = m_folder / "result.mp4";
        const shim::Outcome outcome =
            shim::run({shim::shimProgram("ffmpeg"),
                       shim::exportArguments(
                           file, shim::stackedHalves(kind.width, kind.height, previewHeight / 2), result),
                       {}});
        EXPECT_EQ(outcome.exitStatus(), 0) << outcome.errors;
        return shim::measuredPatches(result, previewWidth, previewHeight);
    }

    /// The largest difference of shown patches from the exported ones and from the expected ones.
    static void expectSame(const SourceKind& kind, const VideoFrame& picture,
                           const std::vector<Triple>& exported)
    {
        const std::vector<Triple> shown = patchesIn(picture);
        const std::vector<Triple> patches = shim::patchesOf(kind);
        ASSERT_EQ(shown.size(), patches.size());
        ASSERT_EQ(exported.size(), patches.size());
        double fromExport = 0;
        double fromStandard = 0;
        for (std::size_t index = 0; index < patches.size(); ++index) {
            const Triple lab = shim::exportedLab(shown[index]);
            const double difference = shim::differenceOf(lab, shim::exportedLab(exported[index]));
            EXPECT_LE(difference, kind.isRgb ? largestForRgb : largestFromExport)
                << "patch " << index << ": " << testing::PrintToString(shown[index]) << ", exported "
                << testing::PrintToString(exported[index]);
            fromExport = std::max(fromExport, difference);
            fromStandard =
                std::max(fromStandard, shim::differenceOf(lab, shim::expectedLab(patches[index], kind)));
        }
        EXPECT_LE(fromStandard, largestFromStandard);
        std::cout << kind.name << ": at most " << fromExport << " from the export, " << fromStandard
                  << " from the standard\n";
    }

    void expectPreview(const SourceKind& kind) const
    {
        SCOPED_TRACE(kind.name);
        const auto file = shim::patchesFile(m_folder.path(), kind);
        const std::vector<Triple> wanted = exported(file, kind);
        expectSame(kind, played(file, 1).front(), wanted);
        expectSame(kind, thumbnail(file, 0), wanted);
    }

    TemporaryDirectory m_folder;
};

TEST_F(PreviewColoursTest, AreThoseOfTheExportForEverySourceOfStandardDynamicRange)
{
    for (const SourceKind& kind : shim::standardKinds)
        expectPreview(kind);
}

TEST_F(PreviewColoursTest, AreThoseOfTheExportForHighDynamicRange)
{
    for (const SourceKind& kind : {shim::pq, shim::hlg})
        expectPreview(kind);
}

} // namespace

} // namespace stackreel
