#pragma once

#include "desktop/panels/OpenPanel.h"

#include <QFileDialog>

#include <functional>
#include <memory>

namespace stackreel
{

/// The dialog that a panel is showing, and the completion to call at its end. Main thread.
class ShownPanel
{
public:
    /// Returns the file that the user has confirmed in the dialog, if any.
    using Choice = std::function<std::optional<std::filesystem::path>()>;

    ShownPanel() = default;
    /// Cancels a dialog that is still open.
    ~ShownPanel();
    ShownPanel(const ShownPanel&) = delete;
    ShownPanel& operator=(const ShownPanel&) = delete;

    /// Shows the dialog above the focused window, without blocking, and cancels the dialog shown before.
    /// `choice` is called when the user confirms. `completion` is called once, with the result, when the
    /// dialog has closed.
    void show(std::unique_ptr<QFileDialog> dialog, Choice choice, PanelCompletion completion);

private:
    void finish(bool accepted);

    std::unique_ptr<QFileDialog> m_dialog;
    Choice m_choice;
    PanelCompletion m_completion;
};

} // namespace stackreel
