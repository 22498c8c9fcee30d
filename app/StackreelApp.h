#pragma once

#include "app/UpdaterController.h"
#include "model/AppModel.h"
#include "platform/InfoDictionary.h"
#include "platform/power/SleepInhibitor.h"
#include "ui/MainWindow.h"
#include "ui/WindowActions.h"
#include "ui/WindowModel.h"

namespace stackreel
{

/// The application: owns the one model, the one updater and the one window for the life of the process, and
/// ties them together. Needs a `QApplication`; main thread.
///
/// Whoever wants the program to end leaves the event loop and then calls `shutDown`.
class StackreelApp
{
public:
    /// `info` decides whether there are updates. Throws `std::runtime_error` when the window cannot be made.
    StackreelApp(ModelServices services, const InfoDictionary& info, UpdateServices updates);

    void show() { m_mainWindow.show(); }
    /// Closes the window and ends what is still under way: no child and no half-written file is left.
    void shutDown();

    AppModel& model() { return m_model; }
    QQuickWindow& window() { return m_mainWindow.window(); }

private:
    void keepAwakeWhileExporting();

    AppModel m_model;
    UpdaterController m_updater;
    WindowModel m_windowModel;
    WindowActions m_actions;
    SleepInhibitor m_sleepInhibitor;
    MainWindow m_mainWindow; ///< the last, as it shows all others
};

} // namespace stackreel
