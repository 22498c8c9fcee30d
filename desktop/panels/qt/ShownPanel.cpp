#include "desktop/panels/qt/ShownPanel.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace stackreel
{

namespace
{

bool isShown(const QWindow* window)
{
    return window != nullptr && window->isVisible() && window->type() == Qt::Window;
}

/// The focused window, or the program's first visible one if no window has the focus, as when assistive
/// technology opens the panel.
QWindow* ownerWindow()
{
    if (QWindow* const focused = QGuiApplication::focusWindow(); isShown(focused))
        return focused;
    const QWindowList windows = QGuiApplication::topLevelWindows();
    const auto first = std::find_if(windows.begin(), windows.end(), isShown);
    return first != windows.end() ? *first : nullptr;
}

} // namespace

ShownPanel::~ShownPanel()
{
    finish(false);
}

void ShownPanel::show(std::unique_ptr<QFileDialog> dialog, Choice choice, PanelCompletion completion)
{
    finish(false);
    m_dialog = std::move(dialog);
    m_choice = std::move(choice);
    m_completion = std::move(completion);
    QObject::connect(m_dialog.get(), &QDialog::finished, m_dialog.get(),
                     [this, shown = m_dialog.get()](int result) {
                         if (m_dialog.get() == shown)
                             finish(result == QDialog::Accepted);
                     });
    // The dialog has no parent, because the main window is not a widget. The transient parent keeps the
    // dialog above that window.
    QWindow* const owner = ownerWindow();
    m_dialog->winId();
    if (owner != nullptr && m_dialog->windowHandle() != nullptr)
        m_dialog->windowHandle()->setTransientParent(owner);
    m_dialog->setModal(false);
    m_dialog->show();
}

void ShownPanel::finish(bool accepted)
{
    if (!m_dialog)
        return;
    PanelResponse response = {.accepted = accepted, .url = std::nullopt};
    if (accepted)
        response.url = m_choice();
    // This function may have been called by the dialog, so delete the dialog later.
    QFileDialog* const dialog = m_dialog.release();
    dialog->hide();
    dialog->deleteLater();
    // Call the completion last, because it may show the next dialog.
    std::exchange(m_completion, nullptr)(response);
}

} // namespace stackreel
