#pragma once

#include "player/Stills.h"

namespace stackreel
{

/// Takes the pictures of a file with one decoder, in the order of time and with as little decoding as the
/// tolerance allows: from a key frame where one is close enough, otherwise by decoding on from the last
/// picture where no key frame is nearer. Waits while a player prepares a frame (`ForegroundWork`).
class GStreamerStills : public Stills
{
public:
    bool isPlayable(const std::filesystem::path& file, std::stop_token stop) override;
    void take(const StillRequest& request, std::stop_token stop,
              const std::function<void(Still)>& report) override;
};

} // namespace stackreel
