#pragma once

#include "desktop/panels/OpenPanel.h"
#include "desktop/panels/qt/PanelFolders.h"
#include "desktop/panels/qt/ShownPanel.h"

#include <memory>

namespace stackreel
{

/// The open panel: the desktop's file dialog, or Qt's own if the desktop has none. A second `begin` cancels
/// the dialog that is open. Needs a `QApplication`; main thread.
class FileOpenPanel : public OpenPanel
{
public:
    explicit FileOpenPanel(std::shared_ptr<PanelFolders> folders) : m_folders(std::move(folders)) {}

    void begin(const OpenPanelRequest& request, PanelCompletion completion) override;

private:
    std::shared_ptr<PanelFolders> m_folders;
    ShownPanel m_shown;
};

} // namespace stackreel
