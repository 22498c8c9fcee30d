#include "ffmpeg-shim/TimeStamps.h"

#include "ffmpeg-shim/FilterGraph.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <optional>

namespace stackreel::shim
{

namespace
{

using Arguments = std::vector<std::string>;

/// The value of an option in [first, last); `last` if the option is not there.
Arguments::iterator valueOf(const std::string& option, Arguments::iterator first, Arguments::iterator last)
{
    const auto found = std::find(first, last, option);
    return found == last ? last : std::next(found);
}

/// The start of the options of the output, which follow the name of the last input.
Arguments::iterator outputOptions(Arguments& arguments)
{
    const auto input = std::find(arguments.rbegin(), arguments.rend(), "-i").base();
    return input == arguments.begin() || input == arguments.end() ? input : std::next(input);
}

/// Removes the duration of the output (`-t`) and returns it, if filters can limit the duration instead. For
/// audio, an `atrim` is added to the audio filters, so an output with audio but without audio filters stays
/// unchanged.
std::optional<std::string> takeDuration(Arguments& arguments)
{
    const auto options = outputOptions(arguments);
    const auto duration = valueOf("-t", options, arguments.end());
    const auto audioFilters = valueOf("-af", options, arguments.end());
    const bool silent = std::find(options, arguments.end(), "-an") != arguments.end();
    if (duration == arguments.end() || (audioFilters == arguments.end() && !silent))
        return std::nullopt;
    std::string seconds = *duration;
    if (!silent)
        *audioFilters += (audioFilters->empty() ? "atrim=duration=" : ",atrim=duration=") + seconds;
    arguments.erase(std::prev(duration), std::next(duration));
    return seconds;
}

/// The time of a key frame a third of a second before the end; `std::nullopt` if the output is too short for
/// one. To compare the last picture with the source, it can then be decoded without the up to 250 pictures
/// before it.
std::optional<std::string> lastKeyFrame(const std::string& duration)
{
    double seconds = 0;
    std::from_chars(duration.data(), duration.data() + duration.size(), seconds);
    if (!(seconds > 0.5))
        return std::nullopt;
    std::array<char, 384> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), seconds - 0.35, std::chars_format::fixed, 3);
    return std::string(text.data(), end.ptr);
}

} // namespace

// From FFmpeg 7.0 to 8.0, `setpts` removes the frame rate and the durations of the pictures. Encoders then
// use the inverse of the time base as the frame rate: x264 starts with flat grey pictures, and its level is
// higher than most players support. Players do not show the last picture, because it has no duration.
Arguments withTimeStampsResetAfterEncoding(Arguments arguments)
{
    const auto graphOf = [&] { return valueOf("-filter_complex", arguments.begin(), arguments.end()); };
    if (graphOf() == arguments.end() || !resetsTimeStamps(*graphOf()))
        return arguments;
    const auto duration = takeDuration(arguments);
    const auto graph = graphOf();
    *graph = withTrim(*graph, duration);
    Arguments options{"-bsf:v", "setts=pts=PTS-STARTPTS:dts=DTS-STARTPTS"};
    if (const auto time = duration ? lastKeyFrame(*duration) : std::nullopt)
        options.insert(options.end(), {"-force_key_frames", *time});
    arguments.insert(std::next(graph), options.begin(), options.end());
    return arguments;
}

} // namespace stackreel::shim
