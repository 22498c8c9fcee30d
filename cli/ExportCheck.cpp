#include "cli/ExportCheck.h"

#include "cli/CliError.h"
#include "cli/Decimal.h"
#include "framing/ExportRange.h"
#include "media/ProbeNumbers.h"

#include <algorithm>
#include <cmath>

namespace stackreel
{

namespace
{

[[noreturn]] void failCheck(const std::string& difference)
{
    throw CliError("The export did not become what was asked for: " + difference);
}

const ProbeStream* firstStream(const ProbeDocument& document, std::string_view codecType)
{
    const auto found = std::find_if(document.streams.begin(), document.streams.end(),
                                    [&](const ProbeStream& stream) { return stream.codecType == codecType; });
    return found == document.streams.end() ? nullptr : &*found;
}

std::optional<double> secondsIn(const std::optional<std::string>& text)
{
    return text ? parseDecimal(*text) : std::nullopt;
}

std::optional<double> containerLength(const ProbeDocument& document)
{
    return document.format ? secondsIn(document.format->duration) : std::nullopt;
}

bool isRotated(const ProbeStream& video)
{
    if (!video.sideDataList)
        return false;
    return std::any_of(video.sideDataList->begin(), video.sideDataList->end(),
                       [](const ProbeSideData& entry) { return entry.rotation.value_or(0) != 0; });
}

void checkPicture(const ProbeStream* video, PixelSize expected)
{
    if (video == nullptr)
        failCheck("it has no picture. The source has none in the chosen range.");
    if (video->codecName != "h264")
        failCheck("its picture is coded as " + video->codecName.value_or("something unknown") +
                  ", not h264.");
    if (video->width != expected.width || video->height != expected.height)
        failCheck("its picture is " + std::to_string(video->width.value_or(0)) + " × " +
                  std::to_string(video->height.value_or(0)) + ", not " + std::to_string(expected.width) +
                  " × " + std::to_string(expected.height) + ".");
    if (isRotated(*video))
        failCheck("its picture is marked as turned.");
}

void checkSound(const ProbeStream* audio, bool expected)
{
    if (audio == nullptr && expected)
        failCheck("its sound is missing.");
    if (audio != nullptr && !expected)
        failCheck("it has sound.");
    if (audio != nullptr && audio->codecName != "aac")
        failCheck("its sound is coded as " + audio->codecName.value_or("something unknown") + ", not aac.");
}

void checkLength(std::optional<double> length, double expected, std::optional<std::int64_t> frames)
{
    if (!length)
        failCheck("its length is unknown.");
    const double picture = frames && *frames > 0 ? *length / static_cast<double>(*frames) : 0;
    if (std::abs(*length - expected) <= std::min(0.5, expected / 2) + 2 * picture)
        return;
    const std::string lengths =
        "it lasts " + fixedDecimal(*length, 2) + " s instead of " + fixedDecimal(expected, 2) + " s. ";
    if (*length > expected)
        failCheck(lengths + "The time stamps of the source may be damaged.");
    failCheck(lengths +
              "The source may be damaged, or its picture ends there: choose an earlier end with --to.");
}

} // namespace

ExportExpectation ExportExpectation::of(const ExportRequest& request, const ProbeDocument& source)
{
    const auto range = ExportRange::within(request.media.duration, request.trimStart, request.trimEnd);
    const ProbeStream* video = firstStream(source, "video");
    const bool hasVideoLength = video != nullptr && secondsIn(video->duration).has_value();
    const bool audio = ExportCommandBuilder::carriesAudio(request);
    return {.size = request.settings.size(),
            .audio = audio,
            .lengthSeconds = std::min(range.length, std::max(request.media.duration - range.start, 0.0)),
            .checksVideoLength = hasVideoLength || !audio};
}

void checkExport(const ProbeDocument& report, const ExportExpectation& expected,
                 std::optional<std::int64_t> frames)
{
    const ProbeStream* video = firstStream(report, "video");
    checkPicture(video, expected.size);
    checkSound(firstStream(report, "audio"), expected.audio);
    const auto whole = containerLength(report);
    const auto picture = secondsIn(video->duration);
    checkLength(expected.checksVideoLength && picture ? picture : whole, expected.lengthSeconds, frames);
}

} // namespace stackreel
