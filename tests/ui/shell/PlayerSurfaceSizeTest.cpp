#include "tests/ui/shell/PlayerSurfaceTest.h"

#include <cmath>

namespace stackreel
{

namespace
{

using PlayerSurfaceSizeTest = PlayerSurfaceTest;

TEST_F(PlayerSurfaceSizeTest, SetsTheVideoSizeInDevicePixelsWhenFirstPainted)
{
    newPlayer();
    EXPECT_EQ(m_fakes.journal->take(), Journal::Lines{"player 1: attach output"});
    // The layout for a new clip may change the size before the first paint.
    m_surface.setSize(QSizeF(300, 170));
    EXPECT_EQ(nextLines(), Journal::Lines{sizeLine(inPixels({300, 170}))});
}

TEST_F(PlayerSurfaceSizeTest, SetsTheVideoSizeOfEachNewPlayer)
{
    newPlayer();
    m_fakes.journal->take();
    ASSERT_EQ(nextLines(), Journal::Lines{sizeLine(inPixels({320, 180}))});
    newPlayer();
    EXPECT_EQ(m_fakes.journal->take(),
              (Journal::Lines{"player 1: detach output", "player 2: attach output"}));
    std::string line = sizeLine(inPixels({320, 180}));
    EXPECT_EQ(nextLines(), Journal::Lines{line.replace(line.find('1'), 1, "2")});
}

TEST_F(PlayerSurfaceSizeTest, SetsNoIntermediateVideoSizeWhenAClipIsLoaded)
{
    WindowWithFakes window;
    window.load();
    std::string firstLine;
    EXPECT_TRUE(eventually([&] {
        for (const auto& line : window.fakes().journal->take())
            if (firstLine.empty() && line.find("show at") != std::string::npos)
                firstLine = line;
        return !firstLine.empty();
    }));
    EXPECT_EQ(firstLine, sizeLine(inPixels(window.item(QStringLiteral("playerSurface")).size())));
}

TEST_F(PlayerSurfaceSizeTest, SetsOnlyTheFinalVideoSizeOfAResize)
{
    newPlayer();
    m_fakes.journal->take();
    ASSERT_EQ(nextLines(), Journal::Lines{sizeLine(inPixels({320, 180}))});
    for (int width = 319; width >= 200; --width)
        m_surface.setWidth(width);
    EXPECT_EQ(nextLines(), Journal::Lines{sizeLine(inPixels({200, 180}))});
}

TEST_F(PlayerSurfaceSizeTest, SetsNoVideoSizeWhileItIsEmpty)
{
    m_surface.setSize(QSizeF());
    newPlayer();
    at(0, 0);
    EXPECT_EQ(m_fakes.journal->take(), Journal::Lines{"player 1: attach output"});
    m_surface.setSize(QSizeF(100, 50));
    EXPECT_EQ(nextLines(), Journal::Lines{sizeLine(inPixels({100, 50}))});
}

TEST_F(PlayerSurfaceSizeTest, DrawsAPictureScaledForItPixelForPixel)
{
    newPlayer();
    showStripes();
    expectStripes();
}

TEST_F(PlayerSurfaceSizeTest, DrawsPixelForPixelWhenAnAncestorMoves)
{
    QQuickItem surroundings(m_window.contentItem());
    m_surface.setParentItem(&surroundings);
    newPlayer();
    showStripes();
    for (const QPointF place : {QPointF(0.4, 0.7), QPointF(1.3, 0), QPointF(0, 2.6)}) {
        surroundings.setPosition(place);
        expectStripes();
    }
    m_surface.setParentItem(m_window.contentItem());
}

TEST_F(PlayerSurfaceSizeTest, LeavesNoBlackLineAtTheEdgesOfTheFrame)
{
    newPlayer();
    for (double offset = 0; offset < 1; offset += 0.125) {
        m_surface.setPosition(QPointF(40 + offset, 60 + offset / 2));
        m_surface.setSize(QSizeF(320.3 - offset / 3, 180.6 + offset));
        MediaInfo media = WindowWithFakes::clip();
        media.width = std::lround(m_surface.width() * 1000);
        media.height = std::lround(m_surface.height() * 1000);
        m_model.setMediaInfo(media);
        show(inPixels(m_surface.size()), Qt::red);
        at(0, 0);
        const QImage image = m_window.grabWindow().convertToFormat(QImage::Format_RGB32);
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const QColor colour = image.pixelColor(x, y);
                ASSERT_TRUE(colour == QColor(Qt::red) || colour == QColor(Qt::blue))
                    << x << ", " << y << ": " << colour.name().toStdString() << " at offset " << offset;
            }
    }
}

TEST_F(PlayerSurfaceSizeTest, FillsTheFrameOfTheCropsWithAPictureOfNonSquarePixels)
{
    WindowWithFakes offline;
    MediaInfo media = WindowWithFakes::clip();
    media.width = 1440;
    offline.load(media);
    // The player shows 1440 × 1080 stored pixels of the shape 4:3 as 16:9.
    offline.showPicture({960, 540}, Qt::red);
    const QQuickItem& frame = offline.item(QStringLiteral("videoFrame"));
    EXPECT_NEAR(frame.width() / frame.height(), 4.0 / 3, 1e-6);
    const QImage image = offline.screenshot();
    const QRectF onScreen = frame.mapRectToScene(QRectF(0, 0, frame.width(), frame.height()));
    const double scale = offline.window().effectiveDevicePixelRatio();
    for (const QPointF corner : {onScreen.topLeft() + QPointF(1, 1), onScreen.bottomLeft() + QPointF(1, -2)})
        EXPECT_EQ(image.pixelColor((corner * scale).toPoint()).name().toStdString(), "#ff0000") << corner.x();
}

} // namespace

} // namespace stackreel
