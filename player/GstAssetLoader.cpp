#include "player/GstAssetLoader.h"

#include "player/GstAsset.h"
#include "player/GstImageGenerator.h"

namespace stackreel
{

std::unique_ptr<Asset> GstAssetLoader::open(const std::filesystem::path& file)
{
    return std::make_unique<GstAsset>(file);
}

std::unique_ptr<ImageGenerator> GstAssetLoader::makeImageGenerator(const std::filesystem::path& file,
                                                                   const ImageGeneratorSettings& settings)
{
    return std::make_unique<GstImageGenerator>(file, settings);
}

} // namespace stackreel
