#pragma once

#include "model/AppModel.h"
#include "tests/support/Awaited.h"
#include "tests/support/window/WindowWithFakes.h"
#include "ui/PlayerSurface.h"
#include "ui/geometry/PictureGeometry.h"

#include <QQuickWindow>
#include <QTest>

#include <gtest/gtest.h>

#include <thread>

namespace stackreel
{

/// A `PlayerSurface` in a window of its own. It shows the player that the test sets on the model. All sizes
/// are in points, so the tests work with any scale factor.
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

    std::shared_ptr<PreviewPlayer> newPlayer()
    {
        auto player = m_fakes.players->make();
        m_fakes.journal->take();
        m_model.setPlayer(player);
        return player;
    }
    FakePreviewPlayer& player() { return m_fakes.players->last(); }

    /// Presents a picture on another thread, as players do.
    void show(QSize pixels, Qt::GlobalColor colour, FakePreviewPlayer& on)
    {
        std::thread([&] { on.videoOutput()->present(WindowWithFakes::picture(pixels, colour)); }).join();
    }
    void show(QSize pixels, Qt::GlobalColor colour) { show(pixels, colour, player()); }

    double ratio() const { return m_window.effectiveDevicePixelRatio(); }
    /// The video size for a surface of this size.
    QSize inPixels(QSizeF points) const
    {
        const ViewSize size = videoSize({.width = points.width(), .height = points.height()}, ratio());
        return {int(size.width), int(size.height)};
    }
    /// The colour on the screen at a position of the surface, in points.
    QColor at(double x, double y)
    {
        WindowWithFakes::settle();
        const QImage image = m_window.grabWindow();
        const QPointF point = (m_surface.position() + QPointF(x, y)) * ratio();
        return image.pixelColor(int(point.x()), int(point.y()));
    }
    /// Presents a picture of the surface's size with stripes one pixel wide. If the picture is scaled, or not
    /// aligned to the device pixels, the colours of the stripes change.
    void showStripes()
    {
        QImage stripes(inPixels({320, 180}), QImage::Format_RGB32);
        for (int y = 0; y < stripes.height(); ++y)
            for (int x = 0; x < stripes.width(); ++x)
                stripes.setPixelColor(x, y, x % 2 == 0 ? Qt::white : Qt::red);
        m_model.setMediaInfo(WindowWithFakes::clip()); // of the same aspect ratio as the surface
        player().videoOutput()->present(WindowWithFakes::picture(stripes));
    }
    void expectStripes()
    {
        WindowWithFakes::settle();
        const QImage image = m_window.grabWindow();
        for (int x = 100; x < 110; ++x) {
            const QColor colour = image.pixelColor(int(60 * ratio()) + x, int(150 * ratio()));
            EXPECT_TRUE(colour == QColor(Qt::white) || colour == QColor(Qt::red))
                << colour.name().toStdString();
        }
    }
    /// Waits for new lines in the journal and returns them.
    Journal::Lines nextLines()
    {
        Journal::Lines lines;
        EXPECT_TRUE(eventually([&] { return !(lines = m_fakes.journal->take()).empty(); }));
        return lines;
    }
    std::string sizeLine(QSize pixels) const
    {
        return "player 1: show at " + std::to_string(pixels.width()) + " × " +
               std::to_string(pixels.height());
    }

    FakeServices m_fakes;
    AppModel m_model{m_fakes.services()};
    WindowModel m_windowModel{m_model};
    QQuickWindow m_window;
    PlayerSurface m_surface;
};

} // namespace stackreel
