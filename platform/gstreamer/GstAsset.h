#pragma once

#include "platform/playback/Asset.h"

#include <filesystem>
#include <optional>

namespace stackreel
{

/// An asset judged by what the player would make of it: it can be played when a picture comes out, whatever
/// becomes of its sound. Tried once, at the first question, and given up after ten seconds.
class GstAsset : public Asset
{
public:
    explicit GstAsset(std::filesystem::path file) : m_file(std::move(file)) {}

    bool isPlayable(std::stop_token stop) override { return showsPictures(stop); }
    /// Counts only the one track that is shown.
    int videoTrackCount(std::stop_token stop) override { return showsPictures(stop) ? 1 : 0; }

private:
    bool showsPictures(const std::stop_token& stop);

    std::filesystem::path m_file;
    std::optional<bool> m_showsPictures;
};

} // namespace stackreel
