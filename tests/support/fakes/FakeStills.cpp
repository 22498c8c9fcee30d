#include "tests/support/fakes/FakeStills.h"

#include <memory>

namespace stackreel
{

bool FakeStills::isPlayable(const std::filesystem::path& file, std::stop_token)
{
    usedOn = std::this_thread::get_id();
    judgedFiles.push_back(file);
    return playable;
}

void FakeStills::take(const StillRequest& request, std::stop_token stop,
                      const std::function<void(Still)>& report)
{
    usedOn = std::this_thread::get_id();
    requests.push_back(request);
    for (const Still& still : answers(request.times))
        if (!stop.stop_requested())
            report(still);
}

Still FakeStills::picture(MediaTime requestedTime, int number)
{
    const auto value = std::make_shared<int>(number);
    return {.requestedTime = requestedTime,
            .frame = {.owner = value,
                      .pixels = reinterpret_cast<const std::byte*>(value.get()),
                      .width = 1,
                      .height = 1,
                      .bytesPerLine = sizeof(int),
                      .seconds = requestedTime.seconds()}};
}

int FakeStills::number(const VideoFrame& frame)
{
    return *static_cast<const int*>(frame.owner.get());
}

Still FakeStills::failure(MediaTime requestedTime)
{
    return {.requestedTime = requestedTime, .frame = {}};
}

std::vector<Still> FakeStills::onePictureEach(const std::vector<MediaTime>& times)
{
    std::vector<Still> stills;
    for (const MediaTime time : times)
        stills.push_back(picture(time, static_cast<int>(stills.size())));
    return stills;
}

} // namespace stackreel
