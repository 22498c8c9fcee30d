#pragma once

#include "platform/playback/Asset.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

namespace stackreel
{

/// A media framework of the test's making. Its objects are made and used on worker threads; the test looks at
/// the fields when the work it started has ended.
class FakeAssetLoader : public AssetLoader
{
public:
    // What it answers; none for "cannot tell", which throws.
    std::optional<bool> playable = true;
    std::optional<int> videoTracks = 1;
    /// What a generator reports for the requested times, in the order it reports it.
    std::function<std::vector<GeneratedImage>(const std::vector<MediaTime>&)> answers = oneImageEach;
    bool makingGeneratorsFails = false;

    // What it was asked.
    std::vector<std::filesystem::path> openedFiles;
    std::vector<std::filesystem::path> generatorFiles;
    std::vector<ImageGeneratorSettings> generatorSettings;
    std::vector<std::vector<MediaTime>> requestedTimes;
    std::thread::id usedOn;

    std::unique_ptr<Asset> open(const std::filesystem::path& file) override;
    std::unique_ptr<ImageGenerator> makeImageGenerator(const std::filesystem::path& file,
                                                       const ImageGeneratorSettings& settings) override;

    /// An image one pixel wide and high that tells its number.
    static GeneratedImage image(MediaTime requestedTime, int number = 0);
    /// The number of such an image.
    static int number(const VideoFrame& frame);
    static GeneratedImage failure(MediaTime requestedTime);
    /// Images for all the times, numbered from 0.
    static std::vector<GeneratedImage> oneImageEach(const std::vector<MediaTime>& times);
};

} // namespace stackreel
