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
    Trace{"aformat=channel_layouts=",
          {"channel-layout", "named", "the AAC encoder refuses sound without a channel layout"}},
    Trace{"setparams=", {"colours", "bt709", "players guess the colours of a file without tags"}},
    Trace{"bwdif=", {"fields", "deinterlaced", "the source is interlaced"}},
    Trace{"ispace=smpte170m", {"matrix", "bt709", "the source has that of BT.601"}},
    Trace{"in_color_matrix=bt601", {"matrix", "bt709", "the source has that of BT.601"}},
    Trace{"ispace=fcc", {"matrix", "bt709", "the source has that of FCC"}},
    Trace{"ispace=smpte240m", {"matrix", "bt709", "the source has that of SMPTE 240M"}},
    Trace{"ispace=bt2020ncl", {"matrix", "bt709", "the source has that of BT.2020"}},
    Trace{"in_range=pc", {"range", "limited", "the source has the full range"}},
    Trace{"/pq.cube", {"dynamic-range", "standard", "the source is PQ"}},
    Trace{"/hlg.cube", {"dynamic-range", "standard", "the source is HLG"}},
    Trace{"tonemap=", {"dynamic-range", "standard", "the source is PQ or HLG"}},
    Trace{"/gamma22.cube", {"gamma", "bt709", "the source is for displays of gamma 2.2"}},
    Trace{"/gamma28.cube", {"gamma", "bt709", "the source is for displays of gamma 2.8"}},
    Trace{"/smpte170m.cube", {"primaries", "bt709", "the source has those of BT.601 for 525 lines"}},
    Trace{"/bt2020.cube", {"primaries", "bt709", "the source has those of BT.2020"}},
    Trace{"/p3.cube", {"primaries", "bt709", "the source has those of P3"}},
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
}

} // namespace stackreel::shim
