#include "tests/integration/Pictures.h"

#include "tests/integration/Clips.h"

#include <stdexcept>
#include <string>

namespace stackreel
{

namespace
{

std::string cropFilter(PixelCrop crop)
{
    return "crop=" + std::to_string(crop.width) + ":" + std::to_string(crop.height) + ":" +
           std::to_string(crop.x) + ":" + std::to_string(crop.y) + ":exact=1";
}

double figureAfter(const std::string& label, const std::string& text)
{
    const auto found = text.find(label);
    if (found == std::string::npos)
        throw std::runtime_error("no figure in: " + text);
    return std::stod(text.substr(found + label.size()));
}

} // namespace

double similarity(const std::filesystem::path& exported, PixelSize outputSize, Half half,
                  const std::filesystem::path& source, PixelCrop crop, double start)
{
    const std::int64_t panelHeight = outputSize.height / 2;
    const PixelCrop panel = {
        .x = 0, .y = half == Half::top ? 0 : panelHeight, .width = outputSize.width, .height = panelHeight};
    const std::string graph = "[0:v]" + cropFilter(panel) + ",format=yuv420p,setpts=N/TB/25[shown];[1:v]" +
                              cropFilter(crop) + ",scale=" + std::to_string(panel.width) + ":" +
                              std::to_string(panel.height) +
                              ":flags=bicubic,format=yuv420p,setpts=N/TB/25[wanted];"
                              "[shown][wanted]ssim=shortest=1";
    const auto output = runFFmpeg({"-loglevel", "info", "-i", exported.string(), "-ss", std::to_string(start),
                                   "-i", source.string(), "-filter_complex", graph, "-f", "null", "-"});
    return figureAfter(" All:", output.standardError);
}

std::vector<int> greys(const std::filesystem::path& video)
{
    const auto output = runFFmpeg({"-i", video.string(), "-map", "0:v:0", "-fps_mode", "passthrough", "-vf",
                                   "extractplanes=y,crop=1:1", "-f", "rawvideo", "-"});
    std::vector<int> values;
    for (const char byte : output.standardOutput)
        values.push_back(static_cast<unsigned char>(byte));
    return values;
}

double peakLevel(const std::filesystem::path& file)
{
    const auto output = runFFmpeg({"-loglevel", "info", "-i", file.string(), "-map", "0:a:0", "-af",
                                   "volumedetect", "-f", "null", "-"});
    return figureAfter("max_volume: ", output.standardError);
}

} // namespace stackreel
