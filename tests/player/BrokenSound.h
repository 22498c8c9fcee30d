#pragma once

#include "tests/player/MarkedClip.h"

#include <filesystem>
#include <string>
#include <vector>

namespace stackreel
{

/// Clips of four seconds, 30 frames a second, with intact video. Their sound has a codec without a decoder,
/// or is noise from its first byte on.
inline std::vector<std::filesystem::path> clipsOfBrokenSound()
{
    const MarkedClip clipWithSound{.name = "sounding.mp4", .frames = 120, .keyInterval = 250, .sound = true};
    std::vector<std::filesystem::path> files = {
        renamedCodec(clipWithSound.file(), "unknown-sound.mp4", "mp4a", "ZYGO")};
    const char* rows[][2] = {{"mp4", "aac"},        {"mp4", "ac3"},  {"mov", "libmp3lame"},
                             {"mkv", "libmp3lame"}, {"mkv", "flac"}, {"mkv", "libopus"},
                             {"avi", "mp2"},        {"ts", "aac"},   {"ts", "mp2"},
                             {"ts", "libmp3lame"}};
    for (const auto& [container, codec] : rows)
        files.push_back(MarkedClip{.name = std::string("noise-") + codec + "." + container,
                                   .frames = 120,
                                   .keyInterval = 30,
                                   .sound = true,
                                   .output = std::string("-bsf:a noise=amount=1 -c:a ") + codec}
                            .file());
    return files;
}

} // namespace stackreel
