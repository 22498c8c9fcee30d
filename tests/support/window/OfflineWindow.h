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

/// The program's window with fake services, media and panels, on the offscreen platform. Main thread.
class OfflineWindow
{
public:
    /// Shows the window at this size, title bar included, and waits until it is exposed.
    explicit OfflineWindow(QSize size = QSize(1180, 780));

    AppModel& model() { return m_model; }
    WindowModel& windowModel() { return m_windowModel; }
    QQuickWindow& window() { return m_mainWindow->window(); }
    FakeQueuePlayer& player() { return m_fakes.playback->player(); }
    FakeServices& fakes() { return m_fakes; }
    WindowActions& actions() { return m_actions; }
    /// How often "Check for Updates…" was chosen.
    int updateChecks() const { return m_updateChecks; }

    /// Media info of a landscape clip of this duration, 1920 × 1080 with sound.
    static MediaInfo clip(double duration = 20);
    /// Opens a clip through the open panel, up to phase `ready`. The thumbnail task stays pending.
    void load(const MediaInfo& media = clip(), const std::filesystem::path& file = "/clips/Beach day.MOV");
    /// Completes the thumbnail task with pictures of one colour each.
    void finishThumbnails(int count = 12);
    /// Starts an export through the save panel, up to phase `exporting`. It is the last of `fakes().exports`.
    void startExport(const std::filesystem::path& file = "/clips/Beach day-vertical.mp4");
    /// Presents a picture of one colour by the current player.
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

    /// Processes pending events, paints the window and returns its contents.
    QImage screenshot();
    /// Processes the pending events of the main thread.
    static void settle();

    /// A frame of one colour.
    static VideoFrame picture(QSize pixels, Qt::GlobalColor colour);
    /// A frame with a copy of this image.
    static VideoFrame picture(const QImage& image);

private:
    QQuickItem* find(const QString& objectName);

    FakeServices m_fakes;
    AppModel m_model;
    WindowModel m_windowModel;
    int m_updateChecks = 0;
    WindowActions m_actions;
    std::unique_ptr<MainWindow> m_mainWindow;
};

} // namespace stackreel
