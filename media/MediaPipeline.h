#pragma once

#include "platform/playback/Asset.h"

#include <QCoroTask>

#include <filesystem>
#include <memory>
#include <stop_token>
#include <vector>

namespace stackreel
{

/// Makes what the preview plays and the timeline shows. Keeps nothing between calls. All operations are
/// called on, and resume on, a thread with a running event loop; the work itself runs on worker threads.
struct MediaPipeline {
    using Loader = std::shared_ptr<AssetLoader>;

    /// A file the player can play: the source itself where the host's framework can play it and finds a video
    /// track, otherwise a new proxy. That the framework cannot read the source is no failure. Throws what
    /// `createPreview` throws.
    static QCoro::Task<std::filesystem::path> previewSource(std::filesystem::path source, Loader loader,
                                                            std::stop_token stop = {});

    /// Makes a small H.264 proxy of the source, without sound, under a new name in the folder "Stackreel" of
    /// the temporary directory; proxies are never deleted here. Throws `MediaToolError` when the tool is
    /// missing or fails (the partial proxy stays), `SystemError` when the folder cannot be made, and the
    /// runner's errors.
    static QCoro::Task<std::filesystem::path> createPreview(std::filesystem::path source,
                                                            std::stop_token stop = {});

    /// Up to `count` upright images within 320 × 180 pixels from the middles of `count` equal slices of the
    /// duration (seconds), in time order. Frames that cannot be made are missing. Empty at once, without
    /// opening the file, for a duration that is not finite and positive or a count below 1. When the token
    /// fires, what there is by then. Never throws: without memory or threads to work with, empty too.
    static QCoro::Task<std::vector<VideoFrame>> timelineThumbnails(std::filesystem::path file,
                                                                   double duration, int count, Loader loader,
                                                                   std::stop_token stop = {});
};

} // namespace stackreel
