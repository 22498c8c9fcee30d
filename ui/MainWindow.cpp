#include "ui/MainWindow.h"

#include "desktop/accessibility/AccessibleChanges.h"
#include "ui/AccessibleTextInput.h"
#include "ui/WindowActions.h"
#include "ui/WindowModel.h"

#include <QScreen>

#include <stdexcept>

namespace stackreel
{

MainWindow::MainWindow(WindowModel& model, WindowActions& actions)
{
    installAccessibleChanges();
    installAccessibleTextInput();
    m_engine.addImportPath(QStringLiteral(":/qt/qml"));
    m_engine.setInitialProperties({{QStringLiteral("model"), QVariant::fromValue(&model)},
                                   {QStringLiteral("actions"), QVariant::fromValue(&actions)}});
    m_engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Stackreel/Main.qml")));
    const auto roots = m_engine.rootObjects();
    m_window = roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(roots.first());
    if (m_window == nullptr)
        throw std::runtime_error("The window could not be loaded.");
}

void MainWindow::show()
{
    const QSize available = m_window->screen()->availableGeometry().size();
    m_window->resize(m_window->size().boundedTo(available).expandedTo(m_window->minimumSize()));
    m_window->show();
}

} // namespace stackreel
