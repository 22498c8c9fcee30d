#include "tests/ui/shell/PlayerSurfaceTest.h"

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

} // namespace

} // namespace stackreel
