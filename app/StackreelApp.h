#pragma once

#include "app/UpdaterController.h"
#include "desktop/power/SleepInhibitor.h"
#include "model/AppModel.h"
#include "system/InfoDictionary.h"
#include "ui/MainWindow.h"
#include "ui/WindowActions.h"
#include "ui/WindowModel.h"

namespace stackreel
{

/// The application: owns the model, the updater and the window for the life of the process, and connects
/// them. Needs a `QApplication`; main thread.
///
/// To end the program, leave the event loop and then call `shutDown`.
class StackreelApp
{
public:
    /// `info` enables or disables updates. Throws `std::runtime_error` when the window cannot be created.
    StackreelApp(ModelServices services, const InfoDictionary& info, UpdateServices updates,
                 SleepServiceBuses sleepBuses = {});

    void show() { m_mainWindow.show(); }
    /// Closes the window and ends all running operations. No child process and no partial file is left.
    void shutDown();

    AppModel& model() { return m_model; }
    QQuickWindow& window() { return m_mainWindow.window(); }

private:
    void inhibitSleepWhileExporting();

    AppModel m_model;
    UpdaterController m_updater;
    WindowModel m_windowModel;
    WindowActions m_actions;
    SleepInhibitor m_sleepInhibitor;
    MainWindow m_mainWindow; ///< the last member: it uses the others and is destroyed first
};

} // namespace stackreel
