#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace stackreel
{

/// The result of a panel.
struct PanelResponse {
    bool accepted = false;                    ///< the user confirmed
    std::optional<std::filesystem::path> url; ///< the chosen file, absolute
};
using PanelCompletion = std::function<void(const PanelResponse&)>;

/// The kinds of files a panel can offer.
enum class ContentType { audiovisualContent, movie, data, mp4 };

struct OpenPanelRequest {
    std::string title;
    std::string prompt; ///< the text of the button that confirms
    bool canChooseFiles = true;
    bool canChooseDirectories = false;
    bool allowsMultipleSelection = false;
    std::vector<ContentType>
        allowedContentTypes; ///< in the order they are offered; with `data` the user can choose any file
};

/// The host's dialog for choosing a file.
class OpenPanel
{
public:
    virtual ~OpenPanel() = default;

    /// Shows the panel without blocking and calls `completion` once, on the main thread, when it is closed.
    virtual void begin(const OpenPanelRequest& request, PanelCompletion completion) = 0;
};

} // namespace stackreel
