#pragma once

#include "player/Asset.h"
#include "player/base/Clock.h"

#include <exception>
#include <filesystem>
#include <optional>

namespace stackreel
{

/// An asset judged by GStreamer's own discovery, which decodes the beginning of every stream. One damaged
/// stream ends it for all; what shows a picture all the same can be played, if in silence. All this happens
/// once, at the first question, and takes five seconds at most.
class GstAsset : public Asset
{
public:
    explicit GstAsset(std::filesystem::path file) : m_file(std::move(file)) {}

    bool isPlayable(std::stop_token stop) override;
    int videoTrackCount(std::stop_token stop) override;

private:
    struct Facts {
        bool playable = false;
        int videoTracks = 0;
    };

    const Facts& facts(const std::stop_token& stop);
    Facts findOut(const std::stop_token& stop) const;
    bool showsPicture(Clock::Instant latest, const std::stop_token& stop) const;

    std::filesystem::path m_file;
    std::optional<Facts> m_facts;
    std::exception_ptr m_failure; ///< why there are no facts
};

} // namespace stackreel
