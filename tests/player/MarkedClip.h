#pragma once

#include "player/base/VideoFrame.h"

#include <array>
#include <filesystem>
#include <string>

namespace stackreel
{

/// The description of a test clip. Every frame shows its number, counted from 0, as 16 stripes from left to
/// right, the lowest bit first, white for 1 and black for 0.
struct MarkedClip {
    std::string name; ///< the file's name; different for each clip
    int frames = 60;
    int rate = 30;         ///< frames a second
    int keyInterval = 30;  ///< frames
    bool sound = false;    ///< sound as long as the video
    bool variable = false; ///< frames last 1/3, 1 and 5/3 of the usual time in turn
    double delay = 0;      ///< seconds from the start of the sound to that of the video
    std::string size = "320x180";
    std::string tone = "sine=frequency=440:sample_rate=48000"; ///< the source filter of the sound
    std::string output = {};                                   ///< further options before the output
    std::string luma =
        "16+219*mod(floor(N/pow(2\\,floor(16*X/W)))\\,2)"; ///< the `geq` expression of the picture

    /// When a frame starts, in seconds.
    double startOf(int number) const;
    double duration() const { return startOf(frames); }
    /// The path of the clip, which is made unless it exists. Throws `std::runtime_error` when that fails.
    std::filesystem::path file() const;
};

/// A clip of 4 seconds whose samples give their own time: a sample's value is its time divided by 16 seconds.
inline const MarkedClip soundRamp{.name = "ramp.mov",
                                  .frames = 120,
                                  .keyInterval = 250,
                                  .sound = true,
                                  .tone = "aevalsrc='t/16|t/16':s=48000",
                                  .output = "-c:a pcm_s16le"};

/// A copy of a file, named `name`, that is cut off after `bytes`, or in which some bytes are overwritten.
std::filesystem::path truncatedCopy(const std::filesystem::path& file, const std::string& name,
                                    std::uintmax_t bytes);
std::filesystem::path corruptedCopy(const std::filesystem::path& file, const std::string& name,
                                    std::uintmax_t from, std::uintmax_t bytes);
/// A copy of an MP4 file whose first track is shown through a matrix: a point (x, y), counted from the middle
/// of the picture to the right and down, appears at (a x + c y, b x + d y).
std::filesystem::path rotatedCopy(const std::filesystem::path& file, const std::string& name,
                                  const std::array<int, 4>& abcd);
/// A copy in which every occurrence of `from` is replaced by `to`.
std::filesystem::path renamedCodec(const std::filesystem::path& file, const std::string& name,
                                   const std::string& from, const std::string& to);
/// A file in the clips' folder with this content.
std::filesystem::path plainFile(const std::string& name, const std::string& content);

/// The number that a frame shows.
int numberIn(const VideoFrame& frame);

} // namespace stackreel
