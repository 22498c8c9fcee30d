#include "ui/geometry/PictureGeometry.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace stackreel
{

namespace
{

ViewRect targetOf(ViewSize pixels, double aspect, ViewSize view)
{
    return placePicture(pixels, aspect, view, {}).target;
}

TEST(PictureGeometryTest, FillsTheViewWithAPictureOfTheSameAspect)
{
    EXPECT_EQ(placePicture({1920, 1080}, 0, {320, 180}, {}),
              (PicturePlacement{{0, 0, 320, 180}, {0, 0, 1920, 1080}}));
}

TEST(PictureGeometryTest, FitsAndCentresAPictureOfAnotherAspect)
{
    EXPECT_EQ(targetOf({640, 180}, 0, {320, 180}), (ViewRect{0, 45, 320, 90}));
    EXPECT_EQ(targetOf({90, 90}, 0, {320, 180}), (ViewRect{70, 0, 180, 180}));
}

TEST(PictureGeometryTest, StretchesAPictureToTheGivenAspect)
{
    EXPECT_EQ(placePicture({960, 540}, 4.0 / 3, {960, 720}, {}),
              (PicturePlacement{{0, 0, 960, 720}, {0, 0, 960, 540}}));
    EXPECT_EQ(targetOf({960, 540}, 1, {320, 180}), (ViewRect{70, 0, 180, 180}));
}

TEST(PictureGeometryTest, IsEmptyForAnEmptyPictureOrView)
{
    EXPECT_EQ(placePicture({0, 0}, 1, {320, 180}, {}), PicturePlacement());
    EXPECT_EQ(targetOf({320, 180}, 1, {0, 0}), ViewRect());
}

TEST(PictureGeometryTest, DrawsAPictureScaledForTheViewPixelForPixel)
{
    EXPECT_EQ(placePicture({1100, 620}, 16.0 / 9, {1100, 618.75}, {}),
              (PicturePlacement{{0, 0, 1100, 619}, {0, 0, 1100, 619}}));
}

TEST(PictureGeometryTest, ScalesAPictureThatIsSmallerOrLargerByMoreThanTwoPixels)
{
    EXPECT_EQ(placePicture({198, 98}, 2, {200, 100}, {}).source, (ViewRect{0, 0, 198, 98}));
    EXPECT_EQ(placePicture({202, 102}, 2, {200, 100}, {}).source, (ViewRect{0, 0, 200, 100}));
    EXPECT_EQ(placePicture({204, 104}, 2, {200, 100}, {}).source, (ViewRect{0, 0, 204, 104}));
}

TEST(PictureGeometryTest, VideoSizesAreEvenAndCoverTheView)
{
    EXPECT_EQ(videoSize({320, 180}, 1), (ViewSize{320, 180}));
    EXPECT_EQ(videoSize({321, 180.2}, 1), (ViewSize{322, 182}));
    EXPECT_EQ(videoSize({100, 33.4}, 1.25), (ViewSize{126, 42}));
    EXPECT_EQ(videoSize({}, 2), ViewSize());
}

struct Layout {
    ViewSize view;
    PixelGrid grid;
};

/// A view of any size at any place, on screens of the usual scales.
Layout anyLayout()
{
    const double width = *rc::gen::inRange(200, 20000) / 10.0;
    const double height = *rc::gen::inRange(200, 20000) / 10.0;
    const double ratio = *rc::gen::element(1.0, 1.25, 1.5, 1.75, 2.0);
    const double x = *rc::gen::inRange(0, 4000) / 4.0;
    const double y = *rc::gen::inRange(0, 4000) / 4.0;
    return {.view = {width, height}, .grid = {.devicePixelRatio = ratio, .originX = x, .originY = y}};
}

RC_GTEST_PROP(PictureGeometryProperty, AVideoOfTheViewsAspectCoversItWithoutBeingScaled, ())
{
    const auto [view, grid] = anyLayout();
    const double ratio = grid.devicePixelRatio;
    const ViewSize video = videoSize(view, ratio);
    const PicturePlacement placement = placePicture(video, view.width / view.height, view, grid);
    RC_ASSERT(std::abs(placement.source.width - placement.target.width * ratio) < 1e-6);
    RC_ASSERT(std::abs(placement.source.height - placement.target.height * ratio) < 1e-6);
    RC_ASSERT(placement.source.width <= video.width);
    RC_ASSERT(placement.source.height <= video.height);
    const ViewRect whole = grid.snapped({.width = view.width, .height = view.height});
    RC_ASSERT(std::abs(placement.target.x - whole.x) < 1e-9);
    RC_ASSERT(std::abs(placement.target.y - whole.y) < 1e-9);
    RC_ASSERT(std::abs(placement.target.width - whole.width) < 1e-9);
    RC_ASSERT(std::abs(placement.target.height - whole.height) < 1e-9);
}

RC_GTEST_PROP(PictureGeometryProperty, EveryPictureIsAlignedToDevicePixels, ())
{
    const auto [view, grid] = anyLayout();
    const double aspect = *rc::gen::inRange(1, 40) / 10.0;
    const ViewRect target = placePicture({640, 360}, aspect, view, grid).target;
    for (const double edge : {grid.originX + target.x, grid.originX + target.x + target.width,
                              grid.originY + target.y, grid.originY + target.y + target.height}) {
        const double pixels = edge * grid.devicePixelRatio;
        RC_ASSERT(std::abs(pixels - std::round(pixels)) < 1e-6);
    }
}

} // namespace

} // namespace stackreel
