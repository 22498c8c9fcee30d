#include "ffmpeg-shim/H264Encoder.h"

#include <algorithm>
#include <array>
#include <utility>

namespace stackreel::shim
{

namespace
{

constexpr std::array<std::pair<std::string_view, H264Encoder>, 3> knownEncoders{{
    {"h264_videotoolbox", H264Encoder::videoToolbox},
    {"libx264", H264Encoder::x264},
    {"libopenh264", H264Encoder::openH264},
}};

// Removes the first line from `text` and returns it without its line feed.
std::string_view takeLine(std::string_view& text)
{
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

// Removes the first word from `line` and returns it; empty if there is none.
std::string_view takeWord(std::string_view& line)
{
    constexpr std::string_view blanks = " \t\r";
    line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
    const std::string_view word = line.substr(0, line.find_first_of(blanks));
    line.remove_prefix(word.size());
    return word;
}

// Each line of the list consists of six flags, a name and a description. The first flag is the type of the
// stream.
std::optional<H264Encoder> encoderOfLine(std::string_view line)
{
    const std::string_view flags = takeWord(line);
    if (flags.size() != 6 || flags.front() != 'V')
        return std::nullopt;
    const std::string_view name = takeWord(line);
    for (const auto& [knownName, encoder] : knownEncoders) {
        if (name == knownName)
            return encoder;
    }
    return std::nullopt;
}

} // namespace

std::optional<H264Encoder> preferredEncoder(std::string_view listing)
{
    std::optional<H264Encoder> best;
    while (!listing.empty()) {
        const std::optional<H264Encoder> found = encoderOfLine(takeLine(listing));
        if (found && (!best || *found < *best))
            best = found;
    }
    return best;
}

} // namespace stackreel::shim
