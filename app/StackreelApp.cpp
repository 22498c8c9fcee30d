#include "app/StackreelApp.h"

#include "app/Shutdown.h"
#include "platform/accessibility/LineEditAccess.h"

#include <QGuiApplication>
#include <QWindow>

#include <utility>

namespace stackreel
{

StackreelApp::StackreelApp(ModelServices services, const InfoDictionary& info, UpdateServices updates)
    : m_model(std::move(services)),
      m_updater(info, std::move(updates)),
      m_windowModel(m_model),
      m_actions([this] { m_updater.checkForUpdates(); }),
      m_sleepInhibitor(QStringLiteral("Exporting a video")),
      m_mainWindow(m_windowModel, m_actions)
{
    installLineEditAccess();
    // Not `quit`, which begins with closing the windows, of which one may have asked for this.
    QObject::connect(&m_actions, &WindowActions::quitRequested, &m_actions, [] { QCoreApplication::exit(); });
    // Later, as an export that sets its last phase has not quite ended.
    QObject::connect(
        &m_model, &AppModel::phaseChanged, &m_actions, [this] { keepAwakeWhileExporting(); },
        Qt::QueuedConnection);
}

void StackreelApp::keepAwakeWhileExporting()
{
    m_sleepInhibitor.setHeld(!m_model.unfinishedExports().empty());
}

void StackreelApp::shutDown()
{
    // A panel may be open as well.
    for (QWindow* shown : QGuiApplication::topLevelWindows())
        shown->hide();
    Shutdown::run(m_model);
}

} // namespace stackreel
