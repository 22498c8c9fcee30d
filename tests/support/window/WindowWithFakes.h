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

/// The program's window with fake services, player and panels, on Qt's offscreen platform. Main thread.
class WindowWithFakes
{
public:
    /// Shows the window with this size, which includes the title bar, and waits until it is exposed.
    explicit WindowWithFakes(QSize size = QSize(1180, 780));

    AppModel& model() { return m_model; }
    WindowModel& windowModel() { return m_windowModel; }
    QQuickWindow& window() { return m_mainWindow->window(); }
    FakePreviewPlayer& player() { return m_fakes.players->last(); }
    FakeServices& fakes() { return m_fakes; }
    WindowActions& actions() { return m_actions; }
    /// How often "Check for Updates…" was chosen.
    int updateChecks() const { return m_updateChecks; }

    /// The properties of a clip of 1920 × 1080 pixels, with audio and this duration in seconds.
    static MediaInfo clip(double duration = 20) { return landscapeClip(duration); }
    /// Loads a clip through the open panel, up to the phase `ready`. The thumbnails stay pending.
    void load(const MediaInfo& media = clip(), const std::filesystem::path& file = "/clips/Beach day.MOV");
    /// Completes the thumbnails with pictures of a single colour each.
    void finishThumbnails(int count = 12);
    /// Starts an export through the save panel, up to the phase `exporting`. The export is the last of
    /// `fakes().exports`.
    void startExport(const std::filesystem::path& file = "/clips/Beach day-vertical.mp4");
    /// Makes the current player present a picture of a single colour.
    void showPicture(QSize pixels, Qt::GlobalColor colour);

    /// The item with this object name, visible or hidden, in the whole window and its popups. Throws if there
    /// is none.
    QQuickItem& item(const QString& objectName);
    bool hasItem(const QString& objectName) { return find(objectName) != nullptr; }
    /// The position of the item's centre in the window.
    QPoint centre(const QString& objectName);
    /// Presses and releases the left button on the item's centre.
    void click(const QString& objectName);
    /// Presses and releases a key, with the modifiers.
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    /// Processes pending events, paints the window and returns its contents.
    QImage screenshot();
    /// Processes the pending events of the main thread.
    static void settle();

    /// A frame of a single colour.
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
