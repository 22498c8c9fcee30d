#pragma once

#include "model/AppModel.h"
#include "tests/support/fakes/FakeServices.h"
#include "ui/MainWindow.h"
#include "ui/WindowActions.h"
#include "ui/WindowModel.h"

#include <QImage>
#include <QQuickItem>
#include <QSize>
#include <QString>

#include <filesystem>
#include <memory>
#include <vector>

namespace stackreel
{

/// The program's window over a world of fakes, without a screen. Main thread.
class OfflineWindow
{
public:
    /// Shows the window at this size, title strip included, and waits until it is painted.
    explicit OfflineWindow(QSize size = QSize(1180, 780));

    AppModel& model() { return m_model; }
    WindowModel& windowModel() { return m_windowModel; }
    QQuickWindow& window() { return m_mainWindow->window(); }
    FakeQueuePlayer& player() { return m_world.playback->player(); }
    FakeServices& world() { return m_world; }
    WindowActions& actions() { return m_actions; }
    /// How often "Check for Updates…" was chosen.
    int updateChecks() const { return m_updateChecks; }

    /// The facts of a landscape clip of this length, 1920 × 1080 with sound.
    static MediaInfo clip(double duration = 20);
    /// Takes a clip through the open panel to phase `ready`. Its thumbnails are still being made.
    void load(const MediaInfo& media = clip(), const std::filesystem::path& file = "/clips/Beach day.MOV");
    /// Ends the making of the thumbnails with pictures of one colour each.
    void finishThumbnails(int count = 12);
    /// Takes a loaded clip through the save panel to phase `exporting`; the export is the world's last one.
    void startExport(const std::filesystem::path& file = "/clips/Beach day-vertical.mp4");
    /// Has the present player show a picture of one colour, as from a thread of its own.
    void showPicture(QSize pixels, Qt::GlobalColor colour);

    /// The visible or hidden item with this object name, in the whole window, popups included; throws when
    /// there is none.
    QQuickItem& item(const QString& objectName);
    bool hasItem(const QString& objectName) { return find(objectName) != nullptr; }
    /// Where the item's centre is in the window.
    QPoint centre(const QString& objectName);
    /// Presses and releases the left button on the item's centre.
    void click(const QString& objectName);
    /// Presses and releases a key, with the modifiers.
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    /// What the window shows once all that is pending has been painted.
    QImage screenshot();
    /// Runs what is queued on the main thread, and lays out and binds anew what it changed.
    static void settle();

    /// A frame of one colour with pixels of its own.
    static VideoFrame picture(QSize pixels, Qt::GlobalColor colour);
    /// A frame of this picture.
    static VideoFrame picture(const QImage& image);

private:
    QQuickItem* find(const QString& objectName);

    FakeServices m_world;
    AppModel m_model;
    WindowModel m_windowModel;
    int m_updateChecks = 0;
    WindowActions m_actions;
    std::unique_ptr<MainWindow> m_mainWindow;
};

} // namespace stackreel
