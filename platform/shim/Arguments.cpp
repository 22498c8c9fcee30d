#include "platform/shim/Arguments.h"

#include "platform/shim/FilterGraph.h"
#include "platform/shim/TimeStamps.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace stackreel::shim
{

namespace
{

const Arguments videoToolboxRequest{"-c:v", "h264_videotoolbox", "-allow_sw", "1"};

// Chosen by measurement on ten seconds of 1080p60, film and film with noise, at the bit rate asked for;
// benchmarks/encoder.md has the table and the commands.
//
// superfast is the cheapest preset with B-frames, 8 × 8 transforms and deblocking; veryfast needs 1.6 times
// its processor time for an SSIM 0.001 better. The rest gets most of that back at superfast's price:
//
// mbtree with rc-lookahead looks six frames ahead and gives the bits to what stays in the picture: SSIM
// +0.0006 on film, +0.002 on noise. Ten frames would give 0.0001 more and cost 2 % of the time.
//
// b-adapt=0 makes three B-frames in a row always; choosing their number gave nothing and cost 4 % of the
// time.
//
// aq-strength 0.4 instead of 1.0 gives the same SSIM for 3 % less time.
//
// The two deadzones keep small coefficients that are dropped otherwise: SSIM +0.0001 on film, +0.0009 on
// noise.
//
// log=1 leaves out the statistics that x264 ends with, also after a failure: eight lines, which are all that
// a user is shown, so that the reason ("No space left on device") before them was lost.
const Arguments x264Options{
    "-c:v",
    "libx264",
    "-preset",
    "superfast",
    "-x264-params",
    "rc-lookahead=6:mbtree=1:b-adapt=0:aq-strength=0.4:deadzone-inter=10:deadzone-intra=10:log=1"};

// Each picture keeps its own time. Without `vfr` FFmpeg 5.1 repeats pictures where the rate varies. The
// encoder's time base is otherwise the inverse of the nominal rate, to which all times would be rounded. This
// one is a multiple of the time bases in use, those of 23.976 and 29.97 pictures a second included.
const Arguments timeOptions{"-fps_mode", "vfr", "-enc_time_base", "1:720000"};

// CABAC, because OpenH264 otherwise writes the baseline profile, which needs more bits for the same picture.
// A key frame every 250 frames, because it would otherwise make only the first, and nothing could seek in the
// file. Its rate control keeps a quality rather than the bit rate unless `-rc_mode` says otherwise.
const Arguments openH264Options{"-c:v", "libopenh264", "-coder", "cabac", "-g", "250", "-rc_mode", "bitrate"};

const Arguments aacRequest{"-c:a", "aac"};

// The encoder refuses sound whose layout the stream does not state ("Unsupported channel layout "6
// channels""), as in clips whose AAC describes its channels one by one. A list of layouts cures that: sound
// without a layout takes the first one of its number of channels, so the usual layout of each number stands
// first.
//
// 5.1(side) and 5.0(side) are missing on purpose. The encoder could write them, but only in that same form
// without a layout, which some phones do not play; without them FFmpeg renames the side channels to back
// channels, and the file states 5.1. The two layouts nearest to 5.1(side), 6.0(front) and 6.1(front), are
// missing too, or it would go there.
const std::string channelLayouts =
    "aformat=channel_layouts=mono|stereo|2.1|4.0|5.0|5.1|6.1|7.1|3.0|3.0(back)"
    "|quad|quad(side)|3.1|4.1|hexagonal|6.1(back)|7.0|7.1(wide)|octagonal|hexadecagonal";

using Position = Arguments::const_iterator;

Position findRequest(Position first, Position last)
{
    return std::search(first, last, videoToolboxRequest.begin(), videoToolboxRequest.end());
}

// Appends the layout filter to the audio filters of one output, or gives them to it where it has none.
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

// A seek to the beginning goes nowhere, except in Flash files: FFmpeg 5.1 begins two seconds later there, or
// finds no picture at all.
void leaveOutIdleSeeks(Arguments& arguments)
{
    static const Arguments idleSeek{"-ss", "0.000", "-i"};
    auto seek = arguments.begin();
    while ((seek = std::search(seek, arguments.end(), idleSeek.begin(), idleSeek.end())) != arguments.end())
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

// Replaces each request by the encoder and its options.
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

bool asksForVideoToolbox(const Arguments& arguments)
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
    // With several outputs it is open which of them a graph belongs to.
    if (requests == 1)
        result = withTimeStampsResetAfterEncoding(std::move(result));
    result = withOptions(result, encoder == H264Encoder::x264 ? x264Options : openH264Options);
    changeValues(result, "-filter_complex", withFullChroma);
    leaveOutIdleSeeks(result);
    return result;
}

} // namespace stackreel::shim
