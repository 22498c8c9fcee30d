#pragma once

#include "framing/ExportCommandBuilder.h"
#include "media/MediaInfo.h"
#include "player/base/VideoFrame.h"

#include <QCoroTask>

#include <filesystem>
#include <functional>
#include <memory>
#include <stop_token>
#include <vector>

namespace stackreel
{

class AssetLoader;
class OpenPanel;
class Playback;
class SavePanel;

/// The services that the model uses. Tests replace them. Each is called on the main thread and resumes there.
struct ModelServices {
    using Path = std::filesystem::path;

    std::function<QCoro::Task<MediaInfo>(Path source, std::stop_token)> inspect;
    std::function<QCoro::Task<Path>(Path source, std::stop_token)> previewSource;
    std::function<QCoro::Task<std::vector<VideoFrame>>(Path file, double duration, int count,
                                                       std::stop_token)>
        timelineThumbnails;
    /// Removes what it has written when it is cancelled.
    std::function<QCoro::Task<Path>(ExportRequest, std::stop_token)> exportSource;
    std::shared_ptr<Playback> playback;
    std::shared_ptr<OpenPanel> openPanel;
    std::shared_ptr<SavePanel> savePanel;

    /// The real services: the media tools, and the given player, media framework and panels.
    static ModelServices system(std::shared_ptr<Playback> playback, std::shared_ptr<AssetLoader> assets,
                                std::shared_ptr<OpenPanel> openPanel, std::shared_ptr<SavePanel> savePanel);
};

} // namespace stackreel
