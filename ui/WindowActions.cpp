#include "ui/WindowActions.h"

#include "system/Version.h"

#include <utility>

namespace stackreel
{

WindowActions::WindowActions(std::function<void()> checkForUpdates, QObject* parent)
    : QObject(parent), m_checkForUpdates(std::move(checkForUpdates))
{
}

QString WindowActions::version() const
{
    return QString::fromLatin1(buildVersion());
}

void WindowActions::setPanelFocused(bool focused)
{
    if (focused == m_panelFocused)
        return;
    m_panelFocused = focused;
    Q_EMIT panelFocusedChanged();
}

void WindowActions::checkForUpdates() const
{
    if (m_checkForUpdates)
        m_checkForUpdates();
}

} // namespace stackreel
