#include "tests/ffmpeg-shim/PatchExport.h"

namespace stackreel::shim
{

std::string stackedHalves(int width, int height, int halfHeight)
{
    const std::string crop =
        "crop=w=" + std::to_string(width) + ":h=" + std::to_string(height / 2) + ":x=0:y=";
    const auto half = [&](const std::string& name, int top) {
        return "[" + name + "Source]" + crop + std::to_string(top) +
               ",scale=320:" + std::to_string(halfHeight) + ":flags=bicubic,setsar=1,setpts=PTS-STARTPTS[" +
               name + "]";
    };
    return "[0:v:0]split=2[topSource][bottomSource];" + half("top", 0) + ";" + half("bottom", height / 2) +
           ";[top][bottom]vstack=inputs=2,format=yuv420p[video]";
}

std::vector<std::string> exportArguments(const std::filesystem::path& file, const std::string& graph,
                                         const std::filesystem::path& result)
{
    return {"-hide_banner",
            "-y",
            "-ss",
            "0.000",
            "-i",
            file.string(),
            "-t",
            "0.300",
            "-filter_complex",
            graph,
            "-map",
            "[video]",
            "-c:v",
            "h264_videotoolbox",
            "-allow_sw",
            "1",
            "-b:v",
            "12M",
            "-movflags",
            "+faststart",
            "-an",
            "-metadata:s:v:0",
            "rotate=0",
            result.string()};
}

} // namespace stackreel::shim
