#pragma once

#include "player/Asset.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

namespace stackreel
{

/// A fake media framework. Its objects are created and used on worker threads. The test must not read the
/// fields until the work it started has ended.
class FakeAssetLoader : public AssetLoader
{
public:
    // The results to return; without a value the call throws.
    std::optional<bool> playable = true;
    std::optional<int> videoTracks = 1;
    /// Returns the images, in the order in which a generator reports them, for the requested times.
    std::function<std::vector<GeneratedImage>(const std::vector<MediaTime>&)> answers = oneImageEach;
    bool makingGeneratorsFails = false;

    // The arguments of the calls so far.
    std::vector<std::filesystem::path> openedFiles;
    std::vector<std::filesystem::path> generatorFiles;
    std::vector<ImageGeneratorSettings> generatorSettings;
    std::vector<std::vector<MediaTime>> requestedTimes;
    std::thread::id usedOn;

    std::unique_ptr<Asset> open(const std::filesystem::path& file) override;
    std::unique_ptr<ImageGenerator> makeImageGenerator(const std::filesystem::path& file,
                                                       const ImageGeneratorSettings& settings) override;

    /// An image of one pixel whose value is `number`.
    static GeneratedImage image(MediaTime requestedTime, int number = 0);
    /// The number in an image made by `image`.
    static int number(const VideoFrame& frame);
    static GeneratedImage failure(MediaTime requestedTime);
    /// One image for each of the times, numbered from 0.
    static std::vector<GeneratedImage> oneImageEach(const std::vector<MediaTime>& times);
};

} // namespace stackreel
