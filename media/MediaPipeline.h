#pragma once

#include "player/Stills.h"

#include <QCoroTask>

#include <filesystem>
#include <memory>
#include <stop_token>
#include <vector>

namespace stackreel
{

/// Creates the file for the preview and the thumbnails for the timeline. Keeps no state between calls. Each
/// operation is called on, and resumes on, a thread with a running event loop. The work itself runs on worker
/// threads.
struct MediaPipeline {
    using StillsPtr = std::shared_ptr<Stills>;

    /// A file that the player can play: the source itself if the player can play it, otherwise a new
    /// preview copy. Throws what `createPreview` throws.
    static QCoro::Task<std::filesystem::path> previewSource(std::filesystem::path source, StillsPtr stills,
                                                            std::stop_token stop = {});

    /// Creates a preview copy: a small H.264 copy of the source, without sound, under a new name
    /// (`PreviewCopies`). Deletes no copy except the partial one of a run that was cancelled or has filled
    /// the disk. Throws `MediaToolError` when the tool is missing or fails (the partial copy otherwise
    /// stays), `SystemError` when no folder can be created, and the errors of `ProcessRunner::run`.
    static QCoro::Task<std::filesystem::path> createPreview(std::filesystem::path source,
                                                            std::stop_token stop = {});

    /// Up to `count` upright images within 320 × 180 pixels, in time order. They are taken at the middles of
    /// `count` equal slices of the duration (seconds). An image that cannot be decoded is left out. The list
    /// is empty, and the file is not opened, for a duration that is not finite and positive or a count below
    /// 1. When the token fires, the list holds the images made so far. Never throws: without enough memory or
    /// threads the list is empty.
    static QCoro::Task<std::vector<VideoFrame>> timelineThumbnails(std::filesystem::path file,
                                                                   double duration, int count,
                                                                   StillsPtr stills,
                                                                   std::stop_token stop = {});
};

} // namespace stackreel
