#include "platform/panels/qt/ShownPanel.h"

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

/// The window in use; the program's first where none is, as when assistive technology asks for the panel.
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
    // The dialog is no child of the window, which is not a widget, but belongs above it all the same.
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
    // This may be called by the dialog itself, which therefore goes later.
    QFileDialog* const dialog = m_dialog.release();
    dialog->hide();
    dialog->deleteLater();
    // Last, as it may show the next dialog.
    std::exchange(m_completion, nullptr)(response);
}

} // namespace stackreel
