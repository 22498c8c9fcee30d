#include "media/MediaPipeline.h"
#include "media/MediaProbe.h"
#include "tests/integration/Clips.h"
#include "tests/support/Awaited.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <ostream>

namespace stackreel
{

namespace
{

/// A clip and the expected height of its preview copy.
struct CopyOfSize {
    ClipRecipe recipe;
    int height;
};

void PrintTo(const CopyOfSize& row, std::ostream* stream)
{
    *stream << row.recipe.width << " x " << row.recipe.height << ", pixels " << row.recipe.sampleAspect
            << ", turned by " << row.recipe.rotation;
}

ClipRecipe still(int width, int height, const std::string& sampleAspect = "1", int rotation = 0)
{
    return {.width = width,
            .height = height,
            .sampleAspect = sampleAspect,
            .rate = "5",
            .seconds = 0.4,
            .rotation = rotation,
            .audio = false};
}

class PreviewCopyTest : public testing::TestWithParam<CopyOfSize>
{
protected:
    ProbeStream copyOf(const std::filesystem::path& clip) const
    {
        const auto copy = runToEnd(MediaPipeline::createPreview(clip));
        return runToEnd(MediaProbe::report(copy)).streams.at(0);
    }

    TemporaryDirectory m_folder;

private:
    ScopedEnvironment m_temporary{"TMPDIR", m_folder.path().string()};
};

} // namespace

TEST_P(PreviewCopyTest, IsAsWideAsWantedAndHasAnEvenHeight)
{
    const auto clip = m_folder / (GetParam().recipe.rotation == 0 ? "clip.mkv" : "clip.mov");
    makeClip(clip, GetParam().recipe);
    const ProbeStream copy = copyOf(clip);
    EXPECT_EQ(copy.codecName, "h264");
    EXPECT_EQ(copy.width, 960);
    EXPECT_EQ(copy.height, GetParam().height);
}

const CopyOfSize ordinary[] = {
    {still(352, 288), 786},   {still(704, 480), 654},   {still(720, 576), 768},   {still(848, 480), 544},
    {still(854, 480), 540},   {still(1280, 534), 400},  {still(1366, 768), 540},  {still(1920, 802), 402},
    {still(1920, 1080), 540}, {still(1998, 1080), 518}, {still(3840, 1634), 408}, {still(4096, 1716), 402},
};
INSTANTIATE_TEST_SUITE_P(OrdinarySizes, PreviewCopyTest, testing::ValuesIn(ordinary));

const CopyOfSize unusual[] = {
    {still(4, 2), 480},
    {still(16, 2), 120},
    {still(641, 359), 538},
    {still(855, 481), 540},
    {still(4096, 2), 2},
    {still(4095, 3), 2},
    {still(8192, 4320), 506},
    {still(1440, 1080, "4/3"), 720},
    {still(720, 480, "8/9"), 640},
    {still(720, 576, "64/45"), 768},
    {still(352, 288, "1", 90), 786},
    {still(352, 288, "1", 180), 786},
    {still(704, 480, "1", 270), 654},
};
INSTANTIATE_TEST_SUITE_P(UnusualSizes, PreviewCopyTest, testing::ValuesIn(unusual));

} // namespace stackreel
