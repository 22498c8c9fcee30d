#pragma once

#include "platform/panels/SavePanel.h"
#include "platform/panels/qt/PanelFolders.h"
#include "platform/panels/qt/ShownPanel.h"

#include <memory>

namespace stackreel
{

/// The save panel as the desktop's file dialog, or the toolkit's own where the desktop has none. With one
/// content type, a name gets that type's suffix if it lacks it. Beginning anew cancels the dialog that is
/// open. Needs a `QApplication`; main thread.
class FileSavePanel : public SavePanel
{
public:
    explicit FileSavePanel(std::shared_ptr<PanelFolders> folders) : m_folders(std::move(folders)) {}

    void begin(const SavePanelRequest& request, PanelCompletion completion) override;

private:
    std::shared_ptr<PanelFolders> m_folders;
    ShownPanel m_shown;
};

} // namespace stackreel
