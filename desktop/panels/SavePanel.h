#pragma once

#include "desktop/panels/OpenPanel.h"

namespace stackreel
{

struct SavePanelRequest {
    std::string title;
    std::string prompt; ///< the text of the button that confirms
    std::filesystem::path defaultName;
    bool canCreateDirectories = false;
    std::vector<ContentType> allowedContentTypes; ///< empty for no restriction
    std::filesystem::path source;                 ///< a file that must not be chosen; empty for none
};

/// The host's dialog for choosing where to save. It asks before it replaces an existing file.
class SavePanel
{
public:
    virtual ~SavePanel() = default;

    /// Shows the panel without blocking and calls `completion` once, on the main thread, when it is closed.
    virtual void begin(const SavePanelRequest& request, PanelCompletion completion) = 0;
};

} // namespace stackreel
