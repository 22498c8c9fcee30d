#include "ffmpeg-shim/Arguments.h"

#include "ffmpeg-shim/FilterGraph.h"
#include "ffmpeg-shim/TimeStamps.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace stackreel::shim
{

namespace
{

const Arguments videoToolboxRequest{"-c:v", "h264_videotoolbox", "-allow_sw", "1"};

// The options were chosen by measurements on ten seconds of 1080p60, film and film with noise, at the
// requested bit rate. benchmarks/encoder.md has the table and the commands.
//
// superfast is the fastest preset with B-frames, 8 × 8 transforms and deblocking. veryfast takes 1.6 times
// its processor time for an SSIM that is 0.001 higher. The other options achieve most of that gain in the
// time of superfast:
//
// mbtree with rc-lookahead=6 looks six frames ahead and spends more bits on what stays in the picture: SSIM
// +0.0006 on film, +0.002 on noise. Ten frames would add 0.0001 and take 2 % more time.
//
// b-adapt=0 always uses three consecutive B-frames. Choosing their number adaptively gave no gain and took 4
// % more time.
//
// aq-strength=0.4 instead of 1.0 gives the same SSIM in 3 % less time.
//
// The two deadzone options keep small coefficients that are otherwise dropped: SSIM +0.0001 on film, +0.0009
// on noise.
//
// log=1 suppresses the statistics that x264 prints at its end, also after a failure. They are eight lines,
// and a user is shown only the last eight lines, so the reason for the failure ("No space left on device")
// would not be shown.
const Arguments x264Options{
    "-c:v",
    "libx264",
    "-preset",
    "superfast",
    "-x264-params",
    "rc-lookahead=6:mbtree=1:b-adapt=0:aq-strength=0.4:deadzone-inter=10:deadzone-intra=10:log=1"};

// These options keep the time stamp of each picture. Without `vfr`, FFmpeg 5.1 repeats pictures if the frame
// rate varies. Without `-enc_time_base`, the encoder's time base is the inverse of the nominal frame rate,
// and all time stamps are rounded to it. 1/720000 divides the durations of a frame at the usual rates evenly,
// also at 23.976 and 29.97 frames a second.
const Arguments timeOptions{"-fps_mode", "vfr", "-enc_time_base", "1:720000"};

// CABAC, because OpenH264 otherwise writes the baseline profile, which needs more bits for the same quality.
// A key frame every 250 frames (`-g`), because otherwise only the first frame is a key frame, and players
// cannot seek in the file. `-rc_mode bitrate`, because the default mode keeps the quality constant instead of
// the bit rate.
const Arguments openH264Options{"-c:v", "libopenh264", "-coder", "cabac", "-g", "250", "-rc_mode", "bitrate"};

const Arguments aacRequest{"-c:a", "aac"};

// The AAC encoder rejects audio without a channel layout ("Unsupported channel layout "6 channels""). Some
// clips have AAC that lists its channels instead of naming a layout. With a list of layouts, `aformat` gives
// such audio the first layout in the list that has its number of channels, so the most common layout for each
// number comes first.
//
// 5.1(side) and 5.0(side) are not in the list on purpose. The encoder would write them as a list of channels,
// which some phones cannot play. Because they are missing, FFmpeg changes the side channels to back channels,
// and the file has the layout 5.1. The two layouts that are nearest to 5.1(side), 6.0(front) and 6.1(front),
// are not in the list either, because FFmpeg would choose one of them instead.
const std::string channelLayouts =
    "aformat=channel_layouts=mono|stereo|2.1|4.0|5.0|5.1|6.1|7.1|3.0|3.0(back)"
    "|quad|quad(side)|3.1|4.1|hexagonal|6.1(back)|7.0|7.1(wide)|octagonal|hexadecagonal";

using Position = Arguments::const_iterator;

Position findRequest(Position first, Position last)
{
    return std::search(first, last, videoToolboxRequest.begin(), videoToolboxRequest.end());
}

// Adds the layout filter to the audio filters of one output (`-af`), which it creates if there are none.
void addChannelLayouts(Arguments& output)
{
    const auto codec = std::search(output.begin(), output.end(), aacRequest.begin(), aacRequest.end());
    if (codec == output.end())
        return;
    const auto option = std::find(output.begin(), output.end(), "-af");
    if (option == output.end()) {
        output.insert(codec, {"-af", channelLayouts});
        return;
    }
    if (std::next(option) == output.end())
        return;
    std::string& filters = *std::next(option);
    filters += (filters.empty() ? "" : ",") + channelLayouts;
}

// Replaces each value of the option by the result of `change`.
void changeValues(Arguments& arguments, const std::string& name,
                  std::string (*change)(const std::string& value))
{
    auto option = arguments.begin();
    while ((option = std::find(option, arguments.end(), name)) != arguments.end()) {
        if (++option != arguments.end())
            *option = change(*option);
    }
}

// Removes seeks to the start of an input. They have no effect, except in Flash files: there FFmpeg 5.1 starts
// two seconds late or finds no picture at all.
void removeSeeksToStart(Arguments& arguments)
{
    static const Arguments seekToStart{"-ss", "0.000", "-i"};
    auto seek = arguments.begin();
    while ((seek = std::search(seek, arguments.end(), seekToStart.begin(), seekToStart.end())) !=
           arguments.end())
        seek = arguments.erase(seek, seek + 2);
}

std::ptrdiff_t countRequests(const Arguments& arguments)
{
    std::ptrdiff_t count = 0;
    Position request = arguments.begin();
    while ((request = findRequest(request, arguments.end())) != arguments.end()) {
        request += std::ssize(videoToolboxRequest);
        ++count;
    }
    return count;
}

// Replaces each request for VideoToolbox by the encoder and its options.
Arguments withOptions(const Arguments& arguments, const Arguments& options)
{
    Position request = findRequest(arguments.begin(), arguments.end());
    Arguments result(arguments.begin(), request);
    while (request != arguments.end()) {
        const Position first = request + std::ssize(videoToolboxRequest);
        request = findRequest(first, arguments.end());
        Arguments output(first, request);
        addChannelLayouts(output);
        result.insert(result.end(), options.begin(), options.end());
        result.insert(result.end(), timeOptions.begin(), timeOptions.end());
        result.insert(result.end(), output.begin(), output.end());
    }
    return result;
}

} // namespace

bool requestsVideoToolbox(const Arguments& arguments)
{
    return findRequest(arguments.begin(), arguments.end()) != arguments.end();
}

Arguments withEncoder(const Arguments& arguments, H264Encoder encoder)
{
    const std::ptrdiff_t requests = countRequests(arguments);
    if (requests == 0)
        return arguments;
    Arguments result = arguments;
    changeValues(result, "-vf", withEvenSides);
    if (encoder == H264Encoder::videoToolbox)
        return result;
    // If there are several outputs, it is unknown to which of them a filter graph belongs.
    if (requests == 1)
        result = withTimeStampsResetAfterEncoding(std::move(result));
    result = withOptions(result, encoder == H264Encoder::x264 ? x264Options : openH264Options);
    changeValues(result, "-filter_complex", withFullChroma);
    removeSeeksToStart(result);
    return result;
}

Arguments withComment(Arguments arguments, const std::string& text)
{
    const bool isExport = std::ranges::find(arguments, "-filter_complex") != arguments.end();
    if (isExport && !text.empty())
        arguments.insert(std::prev(arguments.end()), {"-metadata", "comment=" + text});
    return arguments;
}

} // namespace stackreel::shim
