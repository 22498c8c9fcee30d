#pragma once

#include "platform/playback/VideoFrame.h"

#include <array>
#include <filesystem>
#include <string>

namespace stackreel
{

/// How to make a clip. Every frame shows its number, counted from 0, as 16 stripes from left to right, the
/// lowest bit first, white for one and black for nought.
struct MarkedClip {
    std::string name; ///< tells clips apart, and is the file's name
    int frames = 60;
    int rate = 30;         ///< frames a second
    int keyInterval = 30;  ///< frames
    bool sound = false;    ///< sound as long as the pictures
    bool variable = false; ///< frames last a third, one and five thirds of the usual time in turn
    double delay = 0;      ///< of the pictures after the sound, in seconds
    std::string size = "320x180";
    std::string tone = "sine=frequency=440:sample_rate=48000"; ///< the sound, in FFmpeg's terms
    std::string output = {};                                   ///< further options before the output
    std::string luma = "16+219*mod(floor(N/pow(2\\,floor(16*X/W)))\\,2)"; ///< the picture, in FFmpeg's terms

    /// When a frame starts, in seconds.
    double startOf(int number) const;
    double duration() const { return startOf(frames); }
    /// Makes the clip unless an earlier run has; throws `std::runtime_error` when that fails.
    std::filesystem::path file() const;
};

/// A clip of 4 seconds whose sound tells where it is: a sample's value is its time, 16 seconds being the
/// loudest there is.
inline const MarkedClip soundRamp{.name = "ramp.mov",
                                  .frames = 120,
                                  .keyInterval = 250,
                                  .sound = true,
                                  .tone = "aevalsrc='t/16|t/16':s=48000",
                                  .output = "-c:a pcm_s16le"};

/// A copy of a file with some bytes gone or spoiled. `name` is the copy's.
std::filesystem::path truncatedCopy(const std::filesystem::path& file, const std::string& name,
                                    std::uintmax_t bytes);
std::filesystem::path spoiledCopy(const std::filesystem::path& file, const std::string& name,
                                  std::uintmax_t from, std::uintmax_t bytes);
/// A copy of an MP4 file whose first track is shown through a matrix: a point (x, y), counted from the middle
/// of the picture to the right and down, appears at (a x + c y, b x + d y).
std::filesystem::path turnedCopy(const std::filesystem::path& file, const std::string& name,
                                 const std::array<int, 4>& abcd);
/// A copy in which every occurrence of four letters is replaced.
std::filesystem::path renamedCodec(const std::filesystem::path& file, const std::string& name,
                                   const std::string& from, const std::string& to);
/// A file in the clips' folder with some bytes as its content.
std::filesystem::path plainFile(const std::string& name, const std::string& content);

/// The number that a frame shows.
int numberIn(const VideoFrame& frame);

} // namespace stackreel
