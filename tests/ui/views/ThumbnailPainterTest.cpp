#include "ui/ThumbnailPainter.h"

#include "tests/support/window/WindowWithFakes.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace stackreel
{

namespace
{

using Painter = ThumbnailPainter;

std::vector<VideoFrame> pictures(std::initializer_list<Qt::GlobalColor> colours, QSize size = QSize(320, 180))
{
    std::vector<VideoFrame> frames;
    for (const Qt::GlobalColor colour : colours)
        frames.push_back(WindowWithFakes::picture(size, colour));
    return frames;
}

TEST(ThumbnailPainterTest, CellsDivideTheRowWithASpacingOfTwoPoints)
{
    EXPECT_EQ(Painter::cell(0, 4, QSizeF(206, 42), 1), QRect(0, 0, 50, 42));
    EXPECT_EQ(Painter::cell(1, 4, QSizeF(206, 42), 1), QRect(52, 0, 50, 42));
    EXPECT_EQ(Painter::cell(3, 4, QSizeF(206, 42), 1), QRect(156, 0, 50, 42));
    EXPECT_EQ(Painter::cell(3, 4, QSizeF(206, 42), 2), QRect(312, 0, 100, 84));
}

TEST(ThumbnailPainterTest, CropsAPictureToTheCentreThatFillsItsCell)
{
    EXPECT_EQ(Painter::cropToFill(QSize(320, 180), QSize(90, 180)), QRectF(115, 0, 90, 180));
    EXPECT_EQ(Painter::cropToFill(QSize(320, 180), QSize(64, 18)), QRectF(0, 45, 320, 90));
    EXPECT_EQ(Painter::cropToFill(QSize(320, 180), QSize(160, 90)), QRectF(0, 0, 320, 180));
}

TEST(ThumbnailPainterTest, PaintsPicturesSideBySide)
{
    const QImage row = Painter::paint(pictures({Qt::red, Qt::green}), QSizeF(202, 42), 1);
    ASSERT_EQ(row.size(), QSize(202, 42));
    EXPECT_EQ(row.pixelColor(50, 21), QColor(Qt::red));
    EXPECT_EQ(row.pixelColor(99, 21), QColor(Qt::red));
    EXPECT_EQ(row.pixelColor(102, 21), QColor(Qt::green));
    EXPECT_EQ(row.pixelColor(100, 21).rgb(), QColor(Qt::black).rgb());
    EXPECT_NEAR(row.pixelColor(100, 21).alphaF(), 0.72, 0.01);
}

TEST(ThumbnailPainterTest, PaintsOnlyTheCentreOfAWidePicture)
{
    auto image = std::make_shared<QImage>(320, 180, QImage::Format_RGB32);
    image->fill(Qt::green);
    for (int y = 0; y < 180; ++y)
        for (int x = 0; x < 100; ++x)
            image->setPixelColor(x, y, Qt::red);
    const QImage& shared = *image;
    const VideoFrame frame = {.owner = image,
                              .pixels = reinterpret_cast<const std::byte*>(shared.constBits()),
                              .width = 320,
                              .height = 180,
                              .bytesPerLine = shared.bytesPerLine()};
    const QImage row =
        Painter::paint({frame}, QSizeF(28, 42), 1); // the cell shows the columns 100 to 220 of the picture
    EXPECT_EQ(row.pixelColor(2, 21).green(), 255);
    EXPECT_EQ(row.pixelColor(25, 21), QColor(Qt::green));
}

TEST(ThumbnailPainterTest, RoundsTheCornersOfTheRow)
{
    const QImage row = Painter::paint(pictures({Qt::red}), QSizeF(100, 42), 2);
    ASSERT_EQ(row.size(), QSize(200, 84));
    for (const QPoint corner : {QPoint(0, 0), QPoint(199, 0), QPoint(0, 83), QPoint(199, 83)})
        EXPECT_EQ(row.pixelColor(corner).alpha(), 0);
    EXPECT_EQ(row.pixelColor(10, 0), QColor(Qt::red)) << "5 points in";
    EXPECT_LT(row.pixelColor(5, 0).alpha(), 128) << "not yet 3 points in";
}

TEST(ThumbnailPainterTest, PaintsPlaceholdersWithoutPictures)
{
    const QImage row = Painter::paint({}, QSizeF(622, 42), 1); // 12 cells, each 50 points wide
    EXPECT_NE(row.pixelColor(25, 21), row.pixelColor(50, 21));
    EXPECT_EQ(row.pixelColor(25, 21), row.pixelColor(77, 21));
}

TEST(ThumbnailPainterTest, ReturnsANullImageForAnEmptySize)
{
    EXPECT_TRUE(Painter::paint({}, QSizeF(0, 42), 1).isNull());
    EXPECT_TRUE(Painter::paint(pictures({Qt::red}), QSizeF(100, 0), 2).isNull());
}

TEST(ThumbnailPainterTest, LeavesACellEmptyForAPictureWithoutPixels)
{
    const QImage row = Painter::paint({VideoFrame()}, QSizeF(100, 42), 1);
    EXPECT_NEAR(row.pixelColor(50, 21).alphaF(), 0.72, 0.01);
}

RC_GTEST_PROP(ThumbnailPainterProperty, CellsCoverTheRowWithoutOverlap, ())
{
    const int count = *rc::gen::inRange(1, 40);
    const QSizeF size(*rc::gen::inRange(100, 20000) / 10.0, 42);
    const double scale = *rc::gen::element(1.0, 1.25, 1.5, 1.75, 2.0, 3.0);
    int left = 0;
    for (int index = 0; index < count; ++index) {
        const QRect cell = Painter::cell(index, count, size, scale);
        RC_ASSERT(cell.left() >= left);
        left = cell.left() + std::max(cell.width(), 0);
    }
    RC_ASSERT(Painter::cell(0, count, size, scale).left() == 0);
    RC_PRE(size.width() > 2 * count);
    RC_ASSERT(left == static_cast<int>(std::lround(size.width() * scale)));
}

} // namespace

} // namespace stackreel
