#include "tests/ui/views/ViewsTest.h"

namespace stackreel
{

namespace
{

class ThumbnailStripTest : public ViewsTest
{
protected:
    void SetUp() override { enter(WindowModel::Ready); }

    /// The number of pixels of about this colour in one line of the thumbnails.
    int count(const QColor& wanted)
    {
        const QImage image = window().screenshot();
        const double scale = window().window().effectiveDevicePixelRatio();
        const QPointF left = item("thumbnails").mapToScene(QPointF(0, 10)) * scale;
        int found = 0;
        for (int x = 0; x < static_cast<int>(item("thumbnails").width() * scale); ++x) {
            const QColor pixel = image.pixelColor(left.toPoint() + QPoint(x, 0));
            const auto differs = [](int one, int other) { return std::abs(one - other) > 40; };
            found += !differs(pixel.red(), wanted.red()) && !differs(pixel.green(), wanted.green()) &&
                     !differs(pixel.blue(), wanted.blue());
        }
        return found;
    }
};

using FirstFrameTest = ViewsTest;

TEST_F(FirstFrameTest, ShowsWholePlaceholders)
{
    // Lay the window out while the timeline is hidden and has no width.
    window().window().resize(1200, 800);
    settle();
    enter(WindowModel::Ready);
    const QImage image = window().screenshot();
    const double scale = window().window().effectiveDevicePixelRatio();
    const QPoint left = (item("thumbnails").mapToScene(QPointF(0, 10)) * scale).toPoint();
    int placeholders = 0;
    bool inside = false;
    for (int x = 0; x < static_cast<int>(item("thumbnails").width() * scale); ++x) {
        const bool bright = image.pixelColor(left + QPoint(x, 0)).green() > 12;
        placeholders += bright && !inside;
        inside = bright;
    }
    EXPECT_EQ(placeholders, 12);
}

TEST_F(ThumbnailStripTest, ShowsThumbnailsWhenTheyArrive)
{
    EXPECT_EQ(count(Qt::darkGreen), 0);
    window().finishThumbnails();
    EXPECT_GT(count(Qt::darkGreen), item("thumbnails").width() / 6);
}

TEST_F(ThumbnailStripTest, CropsThumbnailsAgainAfterAResize)
{
    // The red sides of the picture are only visible in a cell that is much wider than high.
    QImage picture(320, 180, QImage::Format_RGB32);
    picture.fill(Qt::red);
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 55; x < 265; ++x)
            picture.setPixelColor(x, y, Qt::green);
    fakes().thumbnails.back().task().complete(std::vector(12, WindowWithFakes::picture(picture)));
    settle();
    ASSERT_GT(count(Qt::red), 24);
    window().window().resize(window().window().minimumSize());
    EXPECT_TRUE(becomesTrue([this] { return count(Qt::red) == 0; }));
    EXPECT_GT(count(Qt::green), item("thumbnails").width() / 2);
}

} // namespace

} // namespace stackreel
