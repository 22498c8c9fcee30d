#pragma once

#include "platform/panels/OpenPanel.h"
#include "platform/panels/qt/PanelFolders.h"
#include "platform/panels/qt/ShownPanel.h"

#include <memory>

namespace stackreel
{

/// The open panel as the desktop's file dialog, or the toolkit's own where the desktop has none. Beginning
/// anew cancels the dialog that is open. Needs a `QApplication`; main thread.
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
