#include "app/StackreelApp.h"

#include "app/Shutdown.h"
#include "desktop/accessibility/AccessibleLineEdit.h"

#include <QApplication>
#include <QFileDialog>
#include <QWindow>

#include <utility>

namespace stackreel
{

namespace
{

/// Whether the active window is a file dialog or a message of one.
bool panelHasFocus()
{
    for (const QWidget* widget = QApplication::activeWindow(); widget != nullptr;
         widget = widget->parentWidget())
        if (qobject_cast<const QFileDialog*>(widget) != nullptr)
            return true;
    return false;
}

} // namespace

StackreelApp::StackreelApp(ModelServices services, const InfoDictionary& info, UpdateServices updates,
                           SleepServiceBuses sleepBuses)
    : m_model(std::move(services)),
      m_updater(info, std::move(updates)),
      m_windowModel(m_model),
      m_actions([this] { m_updater.checkForUpdates(); }),
      m_sleepInhibitor(QStringLiteral("Exporting a video"), std::move(sleepBuses)),
      m_mainWindow(m_windowModel, m_actions)
{
    installAccessibleLineEdits();
    // `exit` instead of `quit`: `quit` first closes the windows, and one of them may be the caller.
    QObject::connect(&m_actions, &WindowActions::quitRequested, &m_actions, [] { QCoreApplication::exit(); });
    QObject::connect(qApp, &QGuiApplication::focusWindowChanged, &m_actions,
                     [this] { m_actions.setPanelFocused(panelHasFocus()); });
    QObject::connect(
        &m_model, &AppModel::unfinishedExportsChanged, &m_actions, [this] { inhibitSleepWhileExporting(); },
        Qt::QueuedConnection);
}

void StackreelApp::inhibitSleepWhileExporting()
{
    m_sleepInhibitor.setInhibited(!m_model.unfinishedExports().empty());
}

void StackreelApp::shutDown()
{
    // Hide all windows, because a panel or a message box may be open besides the main window.
    for (QWindow* window : QGuiApplication::topLevelWindows())
        window->hide();
    Shutdown::run(m_model);
}

} // namespace stackreel
