#include "ui/PlayerSurface.h"

#include "model/AppModel.h"
#include "tests/support/Awaited.h"
#include "tests/support/window/OfflineWindow.h"

#include <QQuickWindow>
#include <QTest>

#include <gtest/gtest.h>

#include <thread>

namespace stackreel
{

namespace
{

/// A surface alone in a window, showing whatever player the test gives the model. All sizes are in points;
/// the run's scale factor may be any.
class PlayerSurfaceTest : public testing::Test
{
protected:
    PlayerSurfaceTest()
    {
        m_window.setColor(Qt::blue);
        m_window.resize(400, 300);
        m_surface.setParentItem(m_window.contentItem());
        m_surface.setModel(&m_windowModel);
        m_surface.setSize(QSizeF(320, 180));
        m_surface.setPosition(QPointF(40, 60));
        m_window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_window));
    }

    std::shared_ptr<QueuePlayer> newPlayer()
    {
        auto player = m_world.playback->makePlayer();
        m_world.journal->take();
        m_model.setPlayer(player);
        return player;
    }
    FakeQueuePlayer& player() { return m_world.playback->player(); }

    /// Shows a picture from a thread of its own, as players do.
    void show(QSize pixels, Qt::GlobalColor colour, FakeQueuePlayer& on)
    {
        std::thread([&] { on.videoOutput()->present(OfflineWindow::picture(pixels, colour)); }).join();
    }
    void show(QSize pixels, Qt::GlobalColor colour) { show(pixels, colour, player()); }

    double ratio() const { return m_window.effectiveDevicePixelRatio(); }
    QSize inPixels(QSizeF points) const { return (points * ratio()).toSize(); }
    /// The colour on screen at a place in the surface.
    QColor at(double x, double y)
    {
        OfflineWindow::settle();
        const QImage image = m_window.grabWindow();
        const QPointF point = (m_surface.position() + QPointF(x, y)) * ratio();
        return image.pixelColor(int(point.x()), int(point.y()));
    }
    /// A picture of the surface's size in stripes of one pixel, which turn grey when they are scaled or moved
    /// by a part of a pixel.
    void showStripes()
    {
        QImage stripes(inPixels({320, 180}) - QSize(1, 1), QImage::Format_RGB32);
        for (int y = 0; y < stripes.height(); ++y)
            for (int x = 0; x < stripes.width(); ++x)
                stripes.setPixelColor(x, y, x % 2 == 0 ? Qt::white : Qt::red);
        player().videoOutput()->present(OfflineWindow::picture(stripes));
    }
    void expectStripes()
    {
        OfflineWindow::settle();
        const QImage image = m_window.grabWindow();
        for (int x = 100; x < 110; ++x) {
            const QColor colour = image.pixelColor(int(60 * ratio()) + x, int(150 * ratio()));
            EXPECT_TRUE(colour == QColor(Qt::white) || colour == QColor(Qt::red))
                << colour.name().toStdString();
        }
    }
    /// What happens next, once something has.
    Journal::Lines nextLines()
    {
        Journal::Lines lines;
        EXPECT_TRUE(eventually([&] { return !(lines = m_world.journal->take()).empty(); }));
        return lines;
    }
    std::string sizeLine(QSize pixels) const
    {
        return "player 1: show at " + std::to_string(pixels.width()) + " × " +
               std::to_string(pixels.height());
    }

    FakeServices m_world;
    AppModel m_model{m_world.services()};
    WindowModel m_windowModel{m_model};
    QQuickWindow m_window;
    PlayerSurface m_surface;
};

TEST_F(PlayerSurfaceTest, IsBlackWithoutAPlayer)
{
    EXPECT_EQ(at(1, 1), QColor(Qt::black));
    EXPECT_EQ(at(160, 90), QColor(Qt::black));
    EXPECT_EQ(at(-2, 90), QColor(Qt::blue));
}

TEST_F(PlayerSurfaceTest, IsBlackUntilThePlayerShowsAPicture)
{
    newPlayer();
    EXPECT_EQ(at(160, 90), QColor(Qt::black));
}

TEST_F(PlayerSurfaceTest, AttachesToAPlayerThatWasThereBefore)
{
    newPlayer();
    PlayerSurface second(m_window.contentItem());
    second.setModel(&m_windowModel);
    EXPECT_NE(player().videoOutput(), nullptr);
}

TEST_F(PlayerSurfaceTest, ShowsAPictureOfItsOwnShapeEverywhere)
{
    newPlayer();
    show(inPixels({320, 180}), Qt::red);
    EXPECT_EQ(at(1, 1), QColor(Qt::red));
    EXPECT_EQ(at(160, 90), QColor(Qt::red));
    EXPECT_EQ(at(318, 178), QColor(Qt::red));
}

TEST_F(PlayerSurfaceTest, FitsAWidePictureBetweenBlackBars)
{
    newPlayer();
    show({640, 180}, Qt::red);
    EXPECT_EQ(at(160, 90), QColor(Qt::red));
    EXPECT_EQ(at(2, 90), QColor(Qt::red));
    EXPECT_EQ(at(160, 40), QColor(Qt::black));
    EXPECT_EQ(at(160, 140), QColor(Qt::black));
}

TEST_F(PlayerSurfaceTest, FitsANarrowPictureBetweenBlackBars)
{
    newPlayer();
    show({180, 180}, Qt::red);
    EXPECT_EQ(at(160, 90), QColor(Qt::red));
    EXPECT_EQ(at(160, 2), QColor(Qt::red));
    EXPECT_EQ(at(60, 90), QColor(Qt::black));
    EXPECT_EQ(at(260, 90), QColor(Qt::black));
}

TEST_F(PlayerSurfaceTest, ShowsTheLatestPicture)
{
    newPlayer();
    show({320, 180}, Qt::red);
    show({320, 180}, Qt::yellow);
    show({320, 180}, Qt::green);
    EXPECT_EQ(at(160, 90), QColor(Qt::green));
}

TEST_F(PlayerSurfaceTest, IsBlackAgainWhenThePlayerClearsIt)
{
    newPlayer();
    show({320, 180}, Qt::red);
    ASSERT_EQ(at(160, 90), QColor(Qt::red));
    std::thread([&] { player().videoOutput()->clear(); }).join();
    EXPECT_EQ(at(160, 90), QColor(Qt::black));
}

TEST_F(PlayerSurfaceTest, FollowsTheModelToANewPlayer)
{
    newPlayer();
    show({320, 180}, Qt::red);
    ASSERT_EQ(at(160, 90), QColor(Qt::red));
    newPlayer();
    EXPECT_EQ(at(160, 90), QColor(Qt::black));
    show({320, 180}, Qt::green);
    EXPECT_EQ(at(160, 90), QColor(Qt::green));
    EXPECT_EQ(m_world.playback->player(1).videoOutput(), nullptr);
}

TEST_F(PlayerSurfaceTest, LosesALatePictureOfThePlayerBefore)
{
    newPlayer();
    const auto formerOutput = player().videoOutput();
    newPlayer();
    show({320, 180}, Qt::green);
    formerOutput->present(OfflineWindow::picture({320, 180}, Qt::red));
    formerOutput->clear();
    EXPECT_EQ(at(160, 90), QColor(Qt::green));
}

TEST_F(PlayerSurfaceTest, IsBlackWhenTheModelHasNoPlayerAnyMore)
{
    newPlayer();
    show({320, 180}, Qt::red);
    ASSERT_EQ(at(160, 90), QColor(Qt::red));
    m_model.setPlayer(nullptr);
    EXPECT_EQ(at(160, 90), QColor(Qt::black));
    EXPECT_EQ(player().videoOutput(), nullptr);
}

TEST_F(PlayerSurfaceTest, KeepsItsPictureWhenThePlayerIsAnnouncedAgain)
{
    const auto same = newPlayer();
    show({320, 180}, Qt::red);
    m_model.setPlayer(same);
    EXPECT_EQ(at(160, 90), QColor(Qt::red));
}

TEST_F(PlayerSurfaceTest, CoversItsItemAtEverySize)
{
    newPlayer();
    show({320, 180}, Qt::red);
    m_surface.setSize(QSizeF(160, 160));
    EXPECT_EQ(at(80, 80), QColor(Qt::red));
    EXPECT_EQ(at(80, 10), QColor(Qt::black));
    EXPECT_EQ(at(80, 158), QColor(Qt::black));
    EXPECT_EQ(at(170, 80), QColor(Qt::blue));
}

TEST_F(PlayerSurfaceTest, ShowsItsPictureInTheNextWindowToo)
{
    newPlayer();
    show({320, 180}, Qt::red);
    ASSERT_EQ(at(160, 90), QColor(Qt::red));
    QQuickWindow second;
    second.resize(400, 300);
    m_surface.setParentItem(second.contentItem());
    second.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&second));
    const QPointF centre = QPointF(200, 150) * second.effectiveDevicePixelRatio();
    EXPECT_EQ(second.grabWindow().pixelColor(centre.toPoint()), QColor(Qt::red));
    m_surface.setParentItem(m_window.contentItem());
}

TEST_F(PlayerSurfaceTest, TellsANewPlayerItsSizeInDevicePixelsWhenItIsPainted)
{
    newPlayer();
    EXPECT_EQ(m_world.journal->take(), Journal::Lines{"player 1: attach output"});
    // What lays the window out for the new clip may change the size until then.
    m_surface.setSize(QSizeF(300, 170));
    EXPECT_EQ(nextLines(), Journal::Lines{sizeLine(inPixels({300, 170}))});
}

TEST_F(PlayerSurfaceTest, TellsEachNewPlayerItsSize)
{
    newPlayer();
    m_world.journal->take();
    ASSERT_EQ(nextLines(), Journal::Lines{sizeLine(inPixels({320, 180}))});
    newPlayer();
    EXPECT_EQ(m_world.journal->take(),
              (Journal::Lines{"player 1: detach output", "player 2: attach output"}));
    std::string line = sizeLine(inPixels({320, 180}));
    EXPECT_EQ(nextLines(), Journal::Lines{line.replace(line.find('1'), 1, "2")});
}

TEST_F(PlayerSurfaceTest, TellsAPlayerOnlyTheSizeOfTheWindowThatShowsItsClip)
{
    OfflineWindow offline;
    offline.load();
    std::string told;
    EXPECT_TRUE(eventually([&] {
        for (const auto& line : offline.world().journal->take())
            if (told.empty() && line.find("show at") != std::string::npos)
                told = line;
        return !told.empty();
    }));
    EXPECT_EQ(told, sizeLine(inPixels(offline.item(QStringLiteral("playerSurface")).size())));
}

TEST_F(PlayerSurfaceTest, TellsThePlayerOnlyTheSizeInWhichAResizeEnds)
{
    newPlayer();
    m_world.journal->take();
    ASSERT_EQ(nextLines(), Journal::Lines{sizeLine(inPixels({320, 180}))});
    for (int width = 319; width >= 200; --width)
        m_surface.setWidth(width);
    EXPECT_EQ(nextLines(), Journal::Lines{sizeLine(inPixels({200, 180}))});
}

TEST_F(PlayerSurfaceTest, TellsNoPlayerOfAnEmptySize)
{
    m_surface.setSize(QSizeF());
    newPlayer();
    at(0, 0);
    EXPECT_EQ(m_world.journal->take(), Journal::Lines{"player 1: attach output"});
    m_surface.setSize(QSizeF(100, 50));
    EXPECT_EQ(nextLines(), Journal::Lines{sizeLine(inPixels({100, 50}))});
}

TEST_F(PlayerSurfaceTest, DrawsAPictureScaledForItPixelForPixel)
{
    newPlayer();
    showStripes();
    expectStripes();
}

TEST_F(PlayerSurfaceTest, DrawsItPixelForPixelWhereverItsSurroundingsTakeIt)
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

TEST(PlayerSurfaceEndTest, PicturesThatComeAfterItsEndGoNowhere)
{
    FakeServices world;
    AppModel model(world.services());
    WindowModel windowModel(model);
    model.setPlayer(world.playback->makePlayer());
    auto surface = std::make_unique<PlayerSurface>();
    surface->setModel(&windowModel);
    const auto output = world.playback->player().videoOutput();
    ASSERT_NE(output, nullptr);
    surface.reset();
    output->present(OfflineWindow::picture({32, 18}, Qt::red));
    output->clear();
    OfflineWindow::settle();
}

TEST(PlayerSurfaceEndTest, GoesWhileThePlayerShowsPictures)
{
    FakeServices world;
    AppModel model(world.services());
    WindowModel windowModel(model);
    model.setPlayer(world.playback->makePlayer());
    for (int round = 0; round < 50; ++round) {
        auto surface = std::make_unique<PlayerSurface>();
        model.setPlayer(world.playback->makePlayer());
        surface->setModel(&windowModel);
        const auto output = world.playback->player().videoOutput();
        const VideoFrame frame = OfflineWindow::picture({32, 18}, Qt::red);
        std::jthread presenting([&](std::stop_token stop) {
            while (!stop.stop_requested())
                output->present(frame);
        });
        OfflineWindow::settle();
        surface.reset();
        OfflineWindow::settle();
    }
}

} // namespace

} // namespace stackreel
