#include "tests/framing/Generators.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

namespace stackreel
{

namespace
{

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();

std::int64_t floorToEven(double fraction, std::int64_t length)
{
    return static_cast<std::int64_t>(std::floor(fraction * static_cast<double>(length))) / 2 * 2;
}

} // namespace

TEST(SourcePixels, AreEvenPixelsOfTheDisplayedFrame)
{
    struct Row {
        CropRegion region;
        MediaInfo media;
        PixelCrop expected;
    };
    const CropRegion middle = {0.25, 0.1, 0.5, 0.8};
    const CropRegion atRight = {0.94, 0.14, 0.06, 0.72};
    const Row rows[] = {
        {{0.04, 0.14, 0.455625, 0.72}, mediaOf(1920, 1080), {76, 150, 874, 776}},
        {{0.504375, 0.14, 0.455625, 0.72}, mediaOf(1920, 1080), {968, 150, 874, 776}},
        {{0, 0, 1, 1}, mediaOf(1920, 1080), {0, 0, 1920, 1080}},
        {{0, 0, 1, 1}, mediaOf(1921, 1081), {0, 0, 1920, 1080}},
        {middle, mediaOf(1920, 1080), {480, 108, 960, 864}},
        {middle, mediaOf(1920, 1080, 180), {480, 108, 960, 864}},
        {middle, mediaOf(1920, 1080, 90), {270, 192, 540, 1536}},
        {middle, mediaOf(1920, 1080, -270), {270, 192, 540, 1536}},
        {middle, mediaOf(1920, 1080, 270), {270, 192, 540, 1536}},
        {middle, mediaOf(1920, 1080, 89), {480, 108, 960, 864}},
        {atRight, mediaOf(1919, 1080), {1802, 150, 114, 776}},
        {atRight, mediaOf(21, 1080), {18, 150, 2, 776}},
        {atRight, mediaOf(1, 1), {0, 0, 1, 1}},
        {{0.94, 0.94, 0.06, 0.06}, mediaOf(33, 33), {30, 30, 2, 2}},
        {{0.94, 0.94, 0.06, 0.06}, mediaOf(18, 16), {16, 14, 2, 2}},
        {{0.94, 0.94, 0.06, 0.06}, mediaOf(17, 3), {14, 2, 2, 1}},
        {{-0.5, -1e-9, 0.001, 0.001}, mediaOf(1920, 1080), {0, 0, 2, 2}},
        {{1, 1, 0.06, 0.06}, mediaOf(1920, 1080), {1920, 1080, 0, 0}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(row.region.sourcePixels(row.media), row.expected)
            << row.region << " of " << row.media.width << "x" << row.media.height << " rotated "
            << row.media.rotation;
}

TEST(SourcePixels, AreDefinedForImpossibleFrameSizes)
{
    const CropRegion half = {0.25, 0.25, 0.5, 0.5};
    EXPECT_EQ(half.sourcePixels(mediaOf(0, 0)), (PixelCrop{0, 0, 0, 0}));
    EXPECT_EQ(half.sourcePixels(mediaOf(-100, -7)), (PixelCrop{0, 0, -100, -7}));
    EXPECT_EQ(half.sourcePixels(mediaOf(smallest, smallest)), (PixelCrop{0, 0, smallest, smallest}));
    const PixelCrop crop = half.sourcePixels(mediaOf(largest, largest));
    EXPECT_EQ(crop.x, std::int64_t{1} << 61);
    EXPECT_EQ(crop.width, std::int64_t{1} << 62);
}

TEST(SourcePixelsDeathTest, AbortForCoordinatesThatDoNotFit64Bits)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const auto media = mediaOf(1920, 1080);
    const char* const message = "crop region: a coordinate does not fit 64 bits";
    EXPECT_DEATH((CropRegion{nan, 0, 0.5, 0.5}.sourcePixels(media)), message);
    EXPECT_DEATH((CropRegion{0, infinity, 0.5, 0.5}.sourcePixels(media)), message);
    EXPECT_DEATH((CropRegion{0, 0, -infinity, 0.5}.sourcePixels(media)), message);
    EXPECT_DEATH((CropRegion{0, 0, 0.5, 1e300}.sourcePixels(media)), message);
    EXPECT_DEATH((CropRegion{0, 0, 1, 1}.sourcePixels(mediaOf(largest, 1))), message)
        << "2 to the power of 63";
    EXPECT_DEATH((CropRegion{-1, 0, 1, 1}.sourcePixels(mediaOf(smallest, 1))), message);
    EXPECT_DEATH((CropRegion{-0.5, 0, 1, 1}.sourcePixels(mediaOf(smallest, 1))),
                 "crop region: a span does not fit 64 bits");
}

RC_GTEST_PROP(SourcePixels, AreEvenAndInsideAnyFrameOf34PixelsOrMore, ())
{
    const CropRegion region = *regionInFrame();
    const auto side = atFullSize(rc::gen::inRange<std::int64_t>(34, 100'000));
    const auto media = mediaOf(*side, *side, *rc::gen::element(0, 90, -90, 180, 270, -270, 45));
    const PixelCrop crop = region.sourcePixels(media);
    RC_ASSERT(crop.x % 2 == 0 && crop.y % 2 == 0 && crop.width % 2 == 0 && crop.height % 2 == 0);
    RC_ASSERT(crop.x >= 0 && crop.y >= 0 && crop.width >= 2 && crop.height >= 2);
    RC_ASSERT(crop.x + crop.width <= media.displayedWidth());
    RC_ASSERT(crop.y + crop.height <= media.displayedHeight());
    // The crop was not cut off at the edge of the frame.
    RC_ASSERT(crop.x == floorToEven(region.x, media.displayedWidth()));
    RC_ASSERT(crop.width == floorToEven(region.width, media.displayedWidth()));
    RC_ASSERT(crop.y == floorToEven(region.y, media.displayedHeight()));
    RC_ASSERT(crop.height == floorToEven(region.height, media.displayedHeight()));
}

RC_GTEST_PROP(SourcePixels, StayInsideSmallFrames, ())
{
    const CropRegion region = *regionInFrame();
    const auto side = atFullSize(rc::gen::inRange<std::int64_t>(1, 34));
    const auto media = mediaOf(*side, *side);
    const PixelCrop crop = region.sourcePixels(media);
    RC_ASSERT(crop.x % 2 == 0 && crop.y % 2 == 0);
    RC_ASSERT(crop.x >= 0 && crop.y >= 0 && crop.width >= 1 && crop.height >= 1);
    RC_ASSERT(crop.x + crop.width <= media.width && crop.y + crop.height <= media.height);
}

} // namespace stackreel
