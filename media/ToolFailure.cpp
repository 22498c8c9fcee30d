#include "media/ToolFailure.h"

#include "media/TemporaryFolderFull.h"
#include "system/Files.h"

#include <charconv>
#include <csignal>
#include <optional>
#include <string_view>

namespace stackreel
{

namespace
{

std::string firstSentence(const std::string& tool)
{
    return tool + " could not process this video. ";
}

std::string signalSentence(int signal)
{
    switch (signal) {
    case SIGKILL:
        return "The system ended it, probably because memory ran out. Close other programs and try again.";
    case SIGXFSZ:
        return "Its file reached the largest size that is allowed here (“ulimit -f”). Allow larger files, or "
               "export a shorter part.";
    case SIGXCPU:
        return "It used up the processor time that is allowed here (“ulimit -t”). Allow more, or export a "
               "shorter part.";
    case SIGABRT:
    case SIGBUS:
    case SIGFPE:
    case SIGILL:
    case SIGSEGV:
        return "It crashed (signal " + std::to_string(signal) + "). Another version of it may succeed.";
    default:
        return "It was ended by signal " + std::to_string(signal) + ". Try again.";
    }
}

bool isCrash(int signal)
{
    return signal == SIGABRT || signal == SIGBUS || signal == SIGFPE || signal == SIGILL || signal == SIGSEGV;
}

/// The signal that ended the tool, or none. FFmpeg catches SIGINT and SIGTERM, and names the signal in its
/// output.
std::optional<int> endingSignal(const ProcessOutput& output, const std::string& lines)
{
    if (output.endedBySignal)
        return output.status;
    const std::string_view caught = "Exiting normally, received signal ";
    const std::size_t found = lines.rfind(caught);
    int signal = 0;
    if (found == std::string::npos)
        return std::nullopt;
    const char* const digits = lines.data() + found + caught.size();
    const bool isNumber = std::from_chars(digits, lines.data() + lines.size(), signal).ec == std::errc();
    return isNumber ? std::optional(signal) : std::nullopt;
}

std::string message(const std::string& tool, const ProcessOutput& output)
{
    std::string lines = output.errorText();
    const std::optional<int> signal = endingSignal(output, lines);
    if (!signal)
        return lines;
    const std::string sentence = firstSentence(tool) + signalSentence(*signal);
    return isCrash(*signal) && !lines.empty() ? sentence + "\n" + lines : sentence;
}

} // namespace

TemporaryFolderFull::TemporaryFolderFull()
    : std::runtime_error("The temporary folder “" + Files::temporaryDirectory().string() +
                         "” is full. Free some space there, or choose another folder with TMPDIR.")
{
}

void throwToolFailure(const std::string& tool, const ProcessOutput& output)
{
    const std::string text = message(tool, output);
    // The program in the resource directory that starts the system's tool has found none.
    for (const char* const name : {"ffmpeg", "ffprobe"})
        if (const auto missing = MediaToolError::toolMissing(name); text == missing.errorDescription())
            throw missing;
    if (text.empty() && output.captureIsFull)
        throw TemporaryFolderFull();
    throw MediaToolError::processFailed(tool, output.status, text);
}

bool namesSignal(const MediaToolError::ProcessFailed& failure)
{
    return failure.message.starts_with(firstSentence(failure.tool));
}

} // namespace stackreel
