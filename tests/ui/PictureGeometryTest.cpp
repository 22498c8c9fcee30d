#include "ui/geometry/PictureGeometry.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace stackreel
{

namespace
{

TEST(PictureGeometryTest, FillsTheViewWithAPictureOfTheSameAspect)
{
    EXPECT_EQ(pictureFrame({1920, 1080}, {320, 180}, {}), (ViewRect{0, 0, 320, 180}));
}

TEST(PictureGeometryTest, FitsAndCentresAPictureOfAnotherAspect)
{
    EXPECT_EQ(pictureFrame({640, 180}, {320, 180}, {}), (ViewRect{0, 45, 320, 90}));
    EXPECT_EQ(pictureFrame({90, 90}, {320, 180}, {}), (ViewRect{70, 0, 180, 180}));
}

TEST(PictureGeometryTest, IsEmptyForAnEmptyPictureOrView)
{
    EXPECT_EQ(pictureFrame({0, 0}, {320, 180}, {}), ViewRect());
    EXPECT_EQ(pictureFrame({320, 180}, {0, 0}, {}), ViewRect());
}

TEST(PictureGeometryTest, DrawsAPictureScaledForTheViewPixelForPixel)
{
    // The player scales pictures to even sizes, so a picture may be about a pixel smaller than the view.
    EXPECT_EQ(pictureFrame({1100, 618}, {1100, 618.75}, {}), (ViewRect{0, 0, 1100, 618}));
}

TEST(PictureGeometryTest, DrawsAPictureScaledForTheViewPixelForPixelOnAHighDpiScreen)
{
    const ViewRect frame = pictureFrame({1374, 772}, {1100, 618.75}, {.devicePixelRatio = 1.25});
    EXPECT_DOUBLE_EQ(frame.width * 1.25, 1374);
    EXPECT_DOUBLE_EQ(frame.height * 1.25, 772);
}

TEST(PictureGeometryTest, ScalesAPictureThatDiffersByMoreThanTwoPixels)
{
    EXPECT_EQ(pictureFrame({1096, 616.5}, {1100, 618.75}, {}), (ViewRect{0, 0, 1100, 618.75}));
}

TEST(PictureGeometryTest, CountsTheDifferenceInDevicePixels)
{
    const PixelGrid dense = {.devicePixelRatio = 2};
    EXPECT_EQ(pictureFrame({198, 99}, {100, 50}, dense), (ViewRect{0.5, 0.5, 99, 49.5})) << "two";
    EXPECT_EQ(pictureFrame({197, 98.5}, {100, 50}, dense), (ViewRect{0, 0, 100, 50})) << "three";
}

RC_GTEST_PROP(PictureGeometryProperty, AlignsAPictureScaledForTheViewToDevicePixels, ())
{
    const double ratio = *rc::gen::element(1.0, 1.25, 1.5, 2.0);
    const int width = *rc::gen::inRange(100, 2000);
    const int height = *rc::gen::inRange(100, 2000);
    const double originX = *rc::gen::inRange(0, 4000) / 4.0;
    const double originY = *rc::gen::inRange(0, 4000) / 4.0;
    const ViewSize view = {width / ratio, height / ratio};
    const ViewRect frame = pictureFrame({double(width - 1), double(height - 1)}, view,
                                        {.devicePixelRatio = ratio, .originX = originX, .originY = originY});
    const double left = (originX + frame.x) * ratio;
    const double top = (originY + frame.y) * ratio;
    if (std::abs(frame.width * ratio - (width - 1)) > 1e-6)
        return; // the aspect ratios differ too much, so the picture is scaled
    RC_ASSERT(std::abs(left - std::round(left)) < 1e-6);
    RC_ASSERT(std::abs(top - std::round(top)) < 1e-6);
}

} // namespace

} // namespace stackreel
