#include "tests/support/fakes/FakeAssetLoader.h"

#include <stdexcept>
#include <utility>

namespace stackreel
{

namespace
{

class FakeAsset : public Asset
{
public:
    explicit FakeAsset(FakeAssetLoader& loader) : m_loader(loader) {}

    bool isPlayable(std::stop_token) override { return answer(m_loader.playable); }
    int videoTrackCount(std::stop_token) override { return answer(m_loader.videoTracks); }

private:
    template <typename Answer>
    Answer answer(const std::optional<Answer>& answer) const
    {
        m_loader.usedOn = std::this_thread::get_id();
        return answer ? *answer : throw std::runtime_error("unknown");
    }

    FakeAssetLoader& m_loader;
};

class FakeImageGenerator : public ImageGenerator
{
public:
    explicit FakeImageGenerator(FakeAssetLoader& loader) : m_loader(loader) {}

    void generate(const std::vector<MediaTime>& times, std::stop_token stop,
                  const std::function<void(GeneratedImage)>& report) override
    {
        m_loader.usedOn = std::this_thread::get_id();
        m_loader.requestedTimes.push_back(times);
        for (const GeneratedImage& image : m_loader.answers(times))
            if (!stop.stop_requested())
                report(image);
    }

private:
    FakeAssetLoader& m_loader;
};

} // namespace

std::unique_ptr<Asset> FakeAssetLoader::open(const std::filesystem::path& file)
{
    openedFiles.push_back(file);
    return std::make_unique<FakeAsset>(*this);
}

std::unique_ptr<ImageGenerator> FakeAssetLoader::makeImageGenerator(const std::filesystem::path& file,
                                                                    const ImageGeneratorSettings& settings)
{
    generatorFiles.push_back(file);
    generatorSettings.push_back(settings);
    if (makingGeneratorsFails)
        throw std::runtime_error("no generator");
    return std::make_unique<FakeImageGenerator>(*this);
}

GeneratedImage FakeAssetLoader::image(MediaTime requestedTime, int number)
{
    const auto value = std::make_shared<int>(number);
    return {.requestedTime = requestedTime,
            .actualTime = requestedTime,
            .frame = {.owner = value,
                      .pixels = reinterpret_cast<const std::byte*>(value.get()),
                      .width = 1,
                      .height = 1,
                      .bytesPerLine = sizeof(int),
                      .seconds = requestedTime.seconds()}};
}

int FakeAssetLoader::number(const VideoFrame& frame)
{
    return *static_cast<const int*>(frame.owner.get());
}

GeneratedImage FakeAssetLoader::failure(MediaTime requestedTime)
{
    return {.requestedTime = requestedTime, .actualTime = MediaTime::indefinite(), .frame = {}};
}

std::vector<GeneratedImage> FakeAssetLoader::oneImageEach(const std::vector<MediaTime>& times)
{
    std::vector<GeneratedImage> images;
    for (const MediaTime time : times)
        images.push_back(image(time, static_cast<int>(images.size())));
    return images;
}

} // namespace stackreel
