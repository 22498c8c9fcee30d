#pragma once

#include "framing/ExportCommandBuilder.h"
#include "media/MediaInfo.h"
#include "model/ExportTurn.h"
#include "player/base/VideoFrame.h"

#include <QCoroTask>

#include <filesystem>
#include <functional>
#include <memory>
#include <stop_token>
#include <vector>

namespace stackreel
{

class OpenPanel;
class PreviewPlayer;
class SavePanel;
class Stills;

/// The services that the model uses. Tests replace them. Each is called on the main thread and resumes there.
struct ModelServices {
    using Path = std::filesystem::path;
    using MakePlayer = std::function<std::shared_ptr<PreviewPlayer>()>;

    std::function<QCoro::Task<MediaInfo>(Path source, std::stop_token)> inspect;
    std::function<QCoro::Task<Path>(Path source, std::stop_token)> previewSource;
    std::function<QCoro::Task<std::vector<VideoFrame>>(Path file, double duration, int count,
                                                       std::stop_token)>
        timelineThumbnails;
    /// Exports when it is its turn. Removes what it has written when it is cancelled.
    std::function<QCoro::Task<Path>(ExportRequest, WaitForTurn, std::stop_token)> exportSource;
    /// An empty player. Throws when no thread can be started.
    MakePlayer makePlayer;
    std::shared_ptr<OpenPanel> openPanel;
    std::shared_ptr<SavePanel> savePanel;

    /// The real services: the media tools, and the given players, stills and panels.
    static ModelServices system(MakePlayer makePlayer, std::shared_ptr<Stills> stills,
                                std::shared_ptr<OpenPanel> openPanel, std::shared_ptr<SavePanel> savePanel);
};

} // namespace stackreel
