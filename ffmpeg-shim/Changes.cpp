#include "ffmpeg-shim/Changes.h"

#include "ffmpeg-shim/Process.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace stackreel::shim
{

namespace
{

/// A change that is recognised by a text which more or fewer arguments contain after it than before.
struct Trace {
    std::string_view text;
    Change change;
};

constexpr std::array traces = {
    Trace{"setts=pts=PTS-STARTPTS",
          {"time-stamps", "kept", "FFmpeg 5.1 repeats pictures and FFmpeg 7 loses the frame rate otherwise"}},
    Trace{",format=yuv444p",
          {"chroma", "full until the halves are stacked", "FFmpeg 5.1 crashes on halves of an odd height"}},
    Trace{",trim=duration=",
          {"duration", "limited by filters", "it counts from the first picture and the first sound"}},
    Trace{"-force_key_frames",
          {"key-frame", "near the end", "the last picture can be checked without decoding many others"}},
    Trace{"aformat=channel_layouts=",
          {"channel-layout", "named", "the AAC encoder refuses sound without a channel layout"}},
    Trace{"comment=", {"comment", "the recipe", "the export can be repeated from its file"}},
    Trace{"-ss", {"seek", "none", "FFmpeg 5.1 loses pictures of Flash files by a seek to 0"}},
};

std::ptrdiff_t countContaining(const Arguments& arguments, std::string_view text)
{
    return std::ranges::count_if(
        arguments, [&](const std::string& argument) { return argument.find(text) != std::string::npos; });
}

Change encoderChange(H264Encoder encoder)
{
    constexpr std::string_view missing = "this FFmpeg has no h264_videotoolbox";
    switch (encoder) {
    case H264Encoder::videoToolbox:
        break;
    case H264Encoder::x264:
        return {"encoder", "libx264", missing};
    case H264Encoder::openH264:
        return {"encoder", "libopenh264", "this FFmpeg has neither h264_videotoolbox nor libx264"};
    }
    return {"encoder", "h264_videotoolbox", "this FFmpeg has it"};
}

} // namespace

std::string Change::line() const
{
    return "[stackreel] " + std::string(name) + "=" + std::string(value) + ": " + std::string(reason);
}

std::string Change::warning() const
{
    if (value != unconverted)
        return "";
    std::string words(name);
    std::ranges::replace(words, '-', ' ');
    return "The video keeps the " + words + " of the source: " + std::string(reason) + ".";
}

std::vector<Change> changesBetween(const Arguments& requested, const Arguments& changed, H264Encoder encoder)
{
    std::vector<Change> changes = {encoderChange(encoder)};
    for (const auto& [text, change] : traces)
        if (countContaining(requested, text) != countContaining(changed, text))
            changes.push_back(change);
    return changes;
}

void report(const Change& change)
{
    if (std::getenv("STACKREEL_REPORT_CHANGES") != nullptr)
        writeError(change.line());
    else if (const std::string warning = change.warning(); !warning.empty())
        writeError(warning);
}

} // namespace stackreel::shim
