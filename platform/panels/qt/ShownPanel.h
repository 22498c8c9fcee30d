#pragma once

#include "platform/panels/OpenPanel.h"

#include <QFileDialog>

#include <functional>
#include <memory>

namespace stackreel
{

/// The dialog that a panel is showing, and who waits for its end. Main thread.
class ShownPanel
{
public:
    /// What the user has confirmed in the dialog, if it is a file.
    using Choice = std::function<std::optional<std::filesystem::path>()>;

    ShownPanel() = default;
    /// A dialog that is still open ends as if it had been cancelled.
    ~ShownPanel();
    ShownPanel(const ShownPanel&) = delete;
    ShownPanel& operator=(const ShownPanel&) = delete;

    /// Shows the dialog without blocking, over the window in use. `choice` is asked once it was confirmed;
    /// `completion` is called once, with the answer, when it has closed. The dialog shown before ends as if
    /// it had been cancelled.
    void show(std::unique_ptr<QFileDialog> dialog, Choice choice, PanelCompletion completion);

private:
    void finish(bool accepted);

    std::unique_ptr<QFileDialog> m_dialog;
    Choice m_choice;
    PanelCompletion m_completion;
};

} // namespace stackreel
