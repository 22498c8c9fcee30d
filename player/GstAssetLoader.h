#pragma once

#include "player/Asset.h"

namespace stackreel
{

/// Assets and frame generators by GStreamer.
class GstAssetLoader : public AssetLoader
{
public:
    std::unique_ptr<Asset> open(const std::filesystem::path& file) override;
    std::unique_ptr<ImageGenerator> makeImageGenerator(const std::filesystem::path& file,
                                                       const ImageGeneratorSettings& settings) override;
};

} // namespace stackreel
