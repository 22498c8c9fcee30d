#pragma once

#include "player/base/MediaTime.h"
#include "player/base/VideoFrame.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <stop_token>
#include <vector>

namespace stackreel
{

/// A media file as the host system's framework sees it. Opening is lazy and cannot fail by itself.
///
/// The calls block, for seconds with a slow file, and are made on a worker thread; they give up early when
/// the stop token fires. Objects are used by one thread at a time.
class Asset
{
public:
    virtual ~Asset() = default;

    /// Whether the framework has all it needs to play the file. Throws `std::runtime_error` when it cannot
    /// tell.
    virtual bool isPlayable(std::stop_token stop) = 0;
    /// How many video tracks the file has. Throws `std::runtime_error` when it cannot tell.
    virtual int videoTrackCount(std::stop_token stop) = 0;
};

/// How a generator makes its images.
struct ImageGeneratorSettings {
    bool appliesPreferredTransform = false; ///< turn and mirror the pictures upright
    int maximumWidth = 0;                   ///< pixels; 0 for no limit; the aspect is kept
    int maximumHeight = 0;                  ///< pixels; 0 for no limit
    MediaTime toleranceBefore;              ///< how much earlier than asked a frame may be
    MediaTime toleranceAfter;               ///< how much later
};

/// One answer of a generator: an image with the time it was taken at, or none when that failed.
struct GeneratedImage {
    MediaTime requestedTime;
    MediaTime actualTime;
    VideoFrame frame; ///< no pixels when the image could not be made
};

/// Makes single images of a file.
class ImageGenerator
{
public:
    virtual ~ImageGenerator() = default;

    /// Makes an image for each requested time, in the order that suits it, and reports each as it comes.
    /// Blocks on a worker thread until all are reported or the stop token fired; `report` is called on that
    /// thread. Never throws.
    virtual void generate(const std::vector<MediaTime>& times, std::stop_token stop,
                          const std::function<void(GeneratedImage)>& report) = 0;
};

/// Opens media files. Any thread.
class AssetLoader
{
public:
    virtual ~AssetLoader() = default;

    virtual std::unique_ptr<Asset> open(const std::filesystem::path& file) = 0;
    virtual std::unique_ptr<ImageGenerator> makeImageGenerator(const std::filesystem::path& file,
                                                               const ImageGeneratorSettings& settings) = 0;
};

} // namespace stackreel
