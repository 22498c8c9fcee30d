#include "ffmpeg-shim/SourceVideo.h"

#include <algorithm>
#include <charconv>
#include <map>

namespace stackreel::shim
{

namespace
{

using Values = std::map<std::string_view, std::string_view>;

Values valuesOf(std::string_view report)
{
    Values values;
    while (!report.empty()) {
        std::string_view line = report.substr(0, report.find_first_of("\r\n"));
        report.remove_prefix(std::min(line.size() + 1, report.size()));
        const std::size_t equals = line.find('=');
        if (equals != std::string_view::npos)
            values.emplace(line.substr(0, equals), line.substr(equals + 1));
    }
    return values;
}

int number(std::string_view text)
{
    int value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

} // namespace

std::vector<std::string> sourceVideoQuery(const std::string& file)
{
    return {"-v",
            "error",
            "-select_streams",
            "v:0",
            "-show_entries",
            "stream=width,height,pix_fmt,color_range,color_space,color_transfer,color_primaries,field_order,"
            "codec_name:stream_side_data=rotation",
            "-of",
            "default=noprint_wrappers=1",
            "-i",
            file};
}

std::optional<SourceVideo> parseSourceVideo(std::string_view report)
{
    Values values = valuesOf(report);
    const auto text = [&](std::string_view name) { return std::string(values[name]); };
    SourceVideo video{.width = number(values["width"]),
                      .height = number(values["height"]),
                      .pixelFormat = text("pix_fmt"),
                      .range = text("color_range"),
                      .matrix = text("color_space"),
                      .transfer = text("color_transfer"),
                      .primaries = text("color_primaries"),
                      .fieldOrder = text("field_order"),
                      .rotation = number(values["rotation"]),
                      .codec = text("codec_name")};
    if (video.width <= 0 || video.height <= 0 || video.pixelFormat.empty() || video.pixelFormat == "unknown")
        return std::nullopt;
    return video;
}

} // namespace stackreel::shim
