#include "tests/ui/shell/PlayerSurfaceTest.h"

#include <QSGNode>
#include <QTest>

#include <thread>

namespace stackreel
{

namespace
{

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

TEST_F(PlayerSurfaceTest, AttachesToAnExistingPlayer)
{
    newPlayer();
    PlayerSurface second(m_window.contentItem());
    second.setModel(&m_windowModel);
    EXPECT_NE(player().videoOutput(), nullptr);
}

TEST_F(PlayerSurfaceTest, FillsTheItemWithAPictureOfTheSameAspect)
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

TEST_F(PlayerSurfaceTest, IsBlackAfterThePlayerClearsTheOutput)
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
    EXPECT_EQ(m_fakes.players->at(1).videoOutput(), nullptr);
}

TEST_F(PlayerSurfaceTest, DropsALatePictureOfThePreviousPlayer)
{
    newPlayer();
    const auto formerOutput = player().videoOutput();
    newPlayer();
    show({320, 180}, Qt::green);
    formerOutput->present(WindowWithFakes::picture({320, 180}, Qt::red));
    formerOutput->clear();
    EXPECT_EQ(at(160, 90), QColor(Qt::green));
}

TEST_F(PlayerSurfaceTest, IsBlackAfterTheModelsPlayerIsRemoved)
{
    newPlayer();
    show({320, 180}, Qt::red);
    ASSERT_EQ(at(160, 90), QColor(Qt::red));
    m_model.setPlayer(nullptr);
    EXPECT_EQ(at(160, 90), QColor(Qt::black));
    EXPECT_EQ(player().videoOutput(), nullptr);
}

TEST_F(PlayerSurfaceTest, KeepsItsPictureWhenTheSamePlayerIsSetAgain)
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

TEST_F(PlayerSurfaceTest, ShowsItsPictureAfterMovingToAnotherWindow)
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

TEST_F(PlayerSurfaceTest, ReleasesPicturesOfThePreviousPlayer)
{
    newPlayer();
    const auto formerOutput = player().videoOutput();
    const VideoFrame untaken = WindowWithFakes::picture({320, 180}, Qt::red);
    const VideoFrame late = WindowWithFakes::picture({320, 180}, Qt::red);
    formerOutput->present(untaken);
    newPlayer();
    formerOutput->present(late);
    EXPECT_EQ(untaken.owner.use_count(), 1);
    EXPECT_EQ(late.owner.use_count(), 1);
}

/// Counts how often it is painted, and the child nodes of its scene graph node.
class CountingSurface : public PlayerSurface
{
public:
    using PlayerSurface::PlayerSurface;

    int paintCount = 0;
    int nodeCount = 0;

protected:
    QSGNode* updatePaintNode(QSGNode* oldNode, UpdatePaintNodeData* data) override
    {
        QSGNode* node = PlayerSurface::updatePaintNode(oldNode, data);
        ++paintCount;
        nodeCount = node->childCount();
        return node;
    }
};

TEST_F(PlayerSurfaceTest, HasOneBackgroundNodeAndOnePictureNodeAfterManyPictures)
{
    newPlayer();
    CountingSurface counting(m_window.contentItem());
    counting.setSize(QSizeF(100, 50));
    counting.setModel(&m_windowModel);
    at(0, 0);
    EXPECT_EQ(counting.nodeCount, 1);
    for (const Qt::GlobalColor colour : {Qt::red, Qt::green, Qt::yellow}) {
        show({100, 50}, colour);
        at(0, 0);
        EXPECT_EQ(counting.nodeCount, 2);
    }
}

TEST_F(PlayerSurfaceTest, RepaintsWhenAnAncestorMoves)
{
    QQuickItem outer(m_window.contentItem());
    QQuickItem inner(&outer);
    CountingSurface counting(m_window.contentItem());
    counting.setSize(QSizeF(100, 50));
    counting.setParentItem(&inner);
    for (QQuickItem* each : {&outer, &inner}) {
        at(0, 0);
        counting.paintCount = 0;
        each->setX(0.4);
        at(0, 0);
        EXPECT_EQ(counting.paintCount, 1);
        each->setY(0.7);
        at(0, 0);
        EXPECT_EQ(counting.paintCount, 2);
    }
}

TEST(PlayerSurfaceEndTest, IgnoresPicturesAfterItsDestruction)
{
    FakeServices fakes;
    AppModel model(fakes.services());
    WindowModel windowModel(model);
    model.setPlayer(fakes.players->make());
    auto surface = std::make_unique<PlayerSurface>();
    surface->setModel(&windowModel);
    const auto output = fakes.players->last().videoOutput();
    ASSERT_NE(output, nullptr);
    surface.reset();
    output->present(WindowWithFakes::picture({32, 18}, Qt::red));
    output->clear();
    WindowWithFakes::settle();
}

TEST(PlayerSurfaceEndTest, CanBeDestroyedWhileThePlayerPresentsPictures)
{
    FakeServices fakes;
    AppModel model(fakes.services());
    WindowModel windowModel(model);
    model.setPlayer(fakes.players->make());
    for (int round = 0; round < 50; ++round) {
        auto surface = std::make_unique<PlayerSurface>();
        model.setPlayer(fakes.players->make());
        surface->setModel(&windowModel);
        const auto output = fakes.players->last().videoOutput();
        const VideoFrame frame = WindowWithFakes::picture({32, 18}, Qt::red);
        std::jthread presenting([&](std::stop_token stop) {
            while (!stop.stop_requested())
                output->present(frame);
        });
        WindowWithFakes::settle();
        surface.reset();
        WindowWithFakes::settle();
    }
}

} // namespace

} // namespace stackreel
