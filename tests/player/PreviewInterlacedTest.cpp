// Shows interlaced clips in the player and as thumbnails, and compares the pictures with those of the export.
#include "tests/ffmpeg-shim/InterlacedClip.h"
#include "tests/ffmpeg-shim/Invocation.h"
#include "tests/ffmpeg-shim/PatchExport.h"
#include "tests/player/Previewed.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <iostream>
#include <string>

namespace stackreel
{

namespace
{

using shim::Fields;
using shim::roughness;

constexpr std::size_t pixels = previewWidth * previewHeight;

/// The green component of each pixel: the clips are grey.
std::string greyOf(const VideoFrame& picture)
{
    std::string grey;
    for (int y = 0; picture.pixels && y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x)
            grey += std::to_integer<char>(picture.pixels[y * picture.bytesPerLine + x * 4 + 1]);
    return grey;
}

double meanDifference(const std::string& one, const std::string& other)
{
    EXPECT_EQ(one.size(), other.size());
    double sum = 0;
    for (std::size_t index = 0; index < std::min(one.size(), other.size()); ++index)
        sum += std::abs(static_cast<unsigned char>(one[index]) - static_cast<unsigned char>(other[index]));
    return sum / static_cast<double>(one.size());
}

class PreviewInterlacedTest : public testing::Test
{
protected:
    /// The second picture of an export, as R'G'B' without colours.
    std::string exported(const std::filesystem::path& file) const
    {
        const auto result = m_folder / "result.mp4";
        const auto filters = shim::stackedHalves(previewWidth, previewHeight, previewHeight / 2);
        const auto program = shim::shimProgram("ffmpeg");
        EXPECT_EQ(shim::run({program, shim::exportArguments(file, filters, result), {}}).exitStatus(), 0);
        const std::string grey = shim::run({program,
                                            {"-v", "error", "-i", result.string(), "-vf",
                                             "format=gbrp,extractplanes=g", "-f", "rawvideo", "-"},
                                            {}})
                                     .output;
        return grey.size() < 2 * pixels ? "" : grey.substr(pixels, pixels);
    }

    TemporaryDirectory m_folder;
};

TEST_F(PreviewInterlacedTest, ShowsOneMomentOfEachPictureAsTheExportDoes)
{
    const double combed =
        roughness(greyOf(thumbnail(interlacedClip(m_folder.path(), Fields::unmarked), 0.1)), previewWidth);
    EXPECT_GT(combed, 40);
    for (const Fields fields : {Fields::topFirst, Fields::bottomFirst}) {
        const auto file = interlacedClip(m_folder.path(), fields);
        const std::string wanted = exported(file);
        for (const VideoFrame& picture : {played(file, 2).back(), thumbnail(file, 0.1)}) {
            const std::string shown = greyOf(picture);
            ASSERT_EQ(shown.size(), pixels);
            EXPECT_LT(roughness(shown, previewWidth), combed / 5);
            EXPECT_LT(meanDifference(shown, wanted), 8);
            std::cout << "comb: " << combed << " to " << roughness(shown, previewWidth)
                      << "; mean difference from the export: " << meanDifference(shown, wanted) << '\n';
        }
    }
}

TEST_F(PreviewInterlacedTest, ShowsEachPictureOnceAtItsTime)
{
    for (const Fields fields : {Fields::topFirst, Fields::bottomFirst, Fields::unmarked}) {
        const auto pictures = played(interlacedClip(m_folder.path(), fields), 8);
        // The range has five pictures, and begins again.
        for (std::size_t index = 0; index < pictures.size(); ++index)
            EXPECT_NEAR(pictures[index].seconds, static_cast<double>(index % 5) / 10, 0.002) << index;
    }
}

} // namespace

} // namespace stackreel
