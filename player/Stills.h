#pragma once

#include "player/base/MediaTime.h"
#include "player/base/VideoFrame.h"

#include <filesystem>
#include <functional>
#include <stop_token>
#include <vector>

namespace stackreel
{

/// The pictures that are wanted of a file.
struct StillRequest {
    std::filesystem::path file;
    std::vector<MediaTime> times;
    int maximumWidth = 0;  ///< pixels; 0 for no limit; the aspect is kept
    int maximumHeight = 0; ///< pixels; 0 for no limit
    MediaTime tolerance;   ///< how much earlier or later than a time its frame may be
};

/// A picture that was taken near a time.
struct Still {
    MediaTime requestedTime;
    VideoFrame frame; ///< upright, with its own time; no pixels when it could not be made
};

/// Takes single pictures from files, and tells which files the player can play. The calls block, for seconds
/// with a slow file, so they are made on worker threads, of which each may make its own at the same time.
class Stills
{
public:
    virtual ~Stills() = default;

    /// Whether the player can show the file's video. False when the file cannot be read, when it has no
    /// video, and when `stop` fires. Takes five seconds at most.
    virtual bool isPlayable(const std::filesystem::path& file, std::stop_token stop) = 0;

    /// Takes a picture for each requested time, in the order that suits it, and reports each as it comes, on
    /// the calling thread. Returns when all are reported or `stop` fires.
    virtual void take(const StillRequest& request, std::stop_token stop,
                      const std::function<void(Still)>& report) = 0;
};

} // namespace stackreel
