#include "cli/FailureText.h"

#include "cli/FrontChange.h"
#include "media/ToolFailure.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <string_view>
#include <utility>

namespace stackreel
{

namespace
{

using Advice = std::pair<std::string_view, std::string_view>;

constexpr std::array advices = {
    Advice("has no H.264 encoder", "Install an FFmpeg that can encode H.264."),
    Advice("could not be started: ", "Check the installation of FFmpeg."),
    Advice("No space left on device", "The disk is full. Free some space and try again."),
    Advice("Disk quota exceeded", "Your share of the disk is used up. Free some space and try again."),
    Advice("No such file or directory", "A file does not exist, or was removed meanwhile."),
    Advice("Permission denied", "A file may not be read or written by this user."),
    Advice("Is a directory", "A folder was named in place of a file."),
    Advice("Cannot allocate memory", "Memory ran out. Close other programs and try again."),
    Advice("Too many open files",
           "The system allows no more open files here. Close other programs, or allow more (“ulimit -n”)."),
    Advice("Resource temporarily unavailable",
           "The system allows no more processes here. Close other programs, or allow more (“ulimit -u”)."),
    Advice("Error while opening encoder",
           "The encoder could not be started; the system may allow no more processes or memory. Close other "
           "programs and try again."),
    Advice("could not be asked for its encoders", "It could not be started completely. Try again."),
};

constexpr std::string_view damaged =
    "It may be damaged, or not be a video. If no player opens it either, copy or download it again.";

std::string_view adviceFor(const std::string& lines)
{
    for (const auto& [reason, advice] : advices)
        if (lines.find(reason) != std::string::npos)
            return advice;
    return damaged;
}

/// The lines without those that show the encoder's progress or report a change of the front. FFmpeg ends the
/// former with a carriage return, so that an error may follow on the same line.
std::string relevantLines(std::string lines)
{
    std::replace(lines.begin(), lines.end(), '\r', '\n');
    std::istringstream stream(lines);
    std::string kept;
    for (std::string line; std::getline(stream, line);)
        if (!line.empty() && !line.starts_with("frame=") && !FrontChange::isReport(line))
            kept += (kept.empty() ? "" : "\n") + line;
    return kept;
}

} // namespace

FailureText FailureText::of(const MediaToolError& error)
{
    const auto* failed = std::get_if<MediaToolError::ProcessFailed>(&error.value());
    if (failed == nullptr)
        return {.sentence = error.errorDescription(), .toolLines = ""};
    if (namesSignal(*failed)) {
        const std::size_t end = std::min(failed->message.find('\n'), failed->message.size());
        return {.sentence = failed->message.substr(0, end),
                .toolLines = relevantLines(failed->message.substr(end))};
    }
    const std::string lines = relevantLines(failed->message);
    return {.sentence = failed->tool + " could not process this video. " + std::string(adviceFor(lines)),
            .toolLines = lines};
}

} // namespace stackreel
