#pragma once

#include "player/Asset.h"

#include <filesystem>

namespace stackreel
{

/// Makes the images of one file with one decoder, in the order of time and with as little decoding as the
/// tolerances allow: a key frame where one lies close enough, else decoding on from the last image where no
/// key frame is nearer. Gives way to players that are bringing up a frame.
class GstImageGenerator : public ImageGenerator
{
public:
    GstImageGenerator(std::filesystem::path file, const ImageGeneratorSettings& settings)
        : m_file(std::move(file)), m_settings(settings)
    {
    }

    void generate(const std::vector<MediaTime>& times, std::stop_token stop,
                  const std::function<void(GeneratedImage)>& report) override;

private:
    std::filesystem::path m_file;
    ImageGeneratorSettings m_settings;
};

} // namespace stackreel
