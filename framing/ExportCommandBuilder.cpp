#include "framing/ExportCommandBuilder.h"

#include "framing/Decimal.h"
#include "framing/ExportRange.h"

#include <initializer_list>

namespace stackreel
{

namespace
{

std::string seconds(double value)
{
    return fixedDecimal(value, 3);
}

std::string panel(const std::string& name, const PixelCrop& crop, const std::string& panelSize)
{
    return "[" + name + "Source]crop=w=" + std::to_string(crop.width) + ":h=" + std::to_string(crop.height) +
           ":x=" + std::to_string(crop.x) + ":y=" + std::to_string(crop.y) + ",scale=" + panelSize +
           ":flags=bicubic,setsar=1,setpts=PTS-STARTPTS[" + name + "]";
}

std::string filterGraph(const ExportRequest& request)
{
    const PixelSize size = request.settings.size();
    const std::string panelSize = std::to_string(size.width) + ":" + std::to_string(size.height / 2);
    return "[0:v:0]split=2[topSource][bottomSource];" +
           panel("top", request.top.sourcePixels(request.media), panelSize) + ";" +
           panel("bottom", request.bottom.sourcePixels(request.media), panelSize) + ";" +
           "[top][bottom]vstack=inputs=2,format=yuv420p[video]";
}

} // namespace

bool ExportCommandBuilder::carriesAudio(const ExportRequest& request)
{
    return request.settings.includeAudio && request.media.audioCodec.has_value();
}

ExportCommand ExportCommandBuilder::build(const ExportRequest& request)
{
    const auto range = ExportRange::within(request.media.duration, request.trimStart, request.trimEnd);
    const bool audio = carriesAudio(request);

    ExportCommand command;
    const auto add = [&](std::initializer_list<std::string> words) {
        command.arguments.insert(command.arguments.end(), words);
    };
    add({"-hide_banner", "-y"});
    add({"-ss", seconds(range.start), "-i", request.input.string(), "-t", seconds(range.length)});
    add({"-filter_complex", filterGraph(request), "-map", "[video]"});
    if (audio)
        add({"-map", "0:a:" + std::to_string(request.audioTrack)});
    add({"-c:v", "h264_videotoolbox", "-allow_sw", "1", "-b:v", "12M", "-movflags", "+faststart"});
    if (audio)
        add({"-af", "asetpts=PTS-STARTPTS", "-c:a", "aac", "-b:a", "192k"});
    else
        add({"-an"});
    add({"-metadata:s:v:0", "rotate=0", request.output.string()});
    return command;
}

} // namespace stackreel
