#pragma once

#include "desktop/panels/SavePanel.h"
#include "desktop/panels/qt/PanelFolders.h"
#include "desktop/panels/qt/ShownPanel.h"

#include <memory>

namespace stackreel
{

/// The save panel: the desktop's file dialog, or Qt's own if the desktop has none. If there is exactly one
/// content type, its suffix is added to a name that lacks it. A second `begin` cancels the dialog that is
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
