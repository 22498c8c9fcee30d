#pragma once

#include "player/Stills.h"

#include <filesystem>
#include <functional>
#include <stop_token>
#include <thread>
#include <vector>

namespace stackreel
{

/// Stills that a test controls. Used on worker threads. The test must not read the fields until the work it
/// started has ended.
class FakeStills : public Stills
{
public:
    // The results to return.
    bool playable = true;
    /// Returns the pictures, in the order in which they are reported, for the requested times.
    std::function<std::vector<Still>(const std::vector<MediaTime>&)> answers = onePictureEach;

    // The arguments of the calls so far.
    std::vector<std::filesystem::path> judgedFiles;
    std::vector<StillRequest> requests;
    std::thread::id usedOn;

    bool isPlayable(const std::filesystem::path& file, std::stop_token stop) override;
    void take(const StillRequest& request, std::stop_token stop,
              const std::function<void(Still)>& report) override;

    /// A picture of one pixel whose value is `number`.
    static Still picture(MediaTime requestedTime, int number = 0);
    /// The number in a picture made by `picture`.
    static int number(const VideoFrame& frame);
    static Still failure(MediaTime requestedTime);
    /// One picture for each of the times, numbered from 0.
    static std::vector<Still> onePictureEach(const std::vector<MediaTime>& times);
};

} // namespace stackreel
