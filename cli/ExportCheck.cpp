#include "cli/ExportCheck.h"

#include "cli/Decimal.h"
#include "framing/ExportRange.h"
#include "media/ProbeNumbers.h"
#include "model/ExportedFile.h"

#include <algorithm>
#include <cmath>

namespace stackreel
{

namespace
{

// A source whose data end this much before its stated length counts as whole.
constexpr double endTolerance = 0.5;

std::optional<double> secondsIn(const std::optional<std::string>& text)
{
    return text ? parseDecimal(*text) : std::nullopt;
}

std::optional<double> containerLength(const ProbeDocument& document)
{
    return document.format ? secondsIn(document.format->duration) : std::nullopt;
}

void checkSound(const ProbeStream* audio, const ExportExpectation& expected)
{
    if (audio == nullptr && expected.audio && !expected.audioMayBeMissing)
        ExportedFile::fail("its sound is missing.");
    if (audio != nullptr && !expected.audio)
        ExportedFile::fail("it has sound.");
    if (audio != nullptr && audio->codecName != "aac")
        ExportedFile::fail("its sound is coded as " + audio->codecName.value_or("something unknown") +
                           ", not aac.");
}

void checkLength(std::optional<double> length, double expected, std::optional<std::int64_t> frames)
{
    if (!length)
        ExportedFile::fail("its length is unknown.");
    const double picture = frames && *frames > 0 ? *length / static_cast<double>(*frames) : 0;
    if (std::abs(*length - expected) <= std::min(0.5, expected / 2) + 2 * picture)
        return;
    const std::string lengths =
        "it lasts " + fixedDecimal(*length, 2) + " s instead of " + fixedDecimal(expected, 2) + " s. ";
    if (*length > expected)
        ExportedFile::fail(lengths + "The time stamps of the source may be damaged.");
    ExportedFile::fail(
        lengths + "The source may be damaged, or its picture ends there: choose an earlier end with --to.");
}

} // namespace

ExportExpectation ExportExpectation::of(const ExportRequest& request)
{
    const auto range = ExportRange::within(request.media.duration, request.trimStart, request.trimEnd);
    return {.size = request.settings.size(),
            .audio = ExportCommandBuilder::carriesAudio(request),
            .lengthSeconds = std::min(range.length, std::max(request.media.duration - range.start, 0.0))};
}

ExportExpectation ExportExpectation::within(const ExportRequest& request, const SourceContent& content) const
{
    ExportExpectation expected = *this;
    expected.audioMayBeMissing = !content.hasSound;
    // A source that was cut short ends before the length that it states. Matroska counts that from 0, also
    // where the first picture comes later.
    const double statedEnd = content.end + std::max(content.start, 0.0);
    if (statedEnd < request.media.duration - endTolerance)
        return expected;
    const auto range = ExportRange::within(request.media.duration, request.trimStart, request.trimEnd);
    expected.lengthSeconds = std::clamp(content.pictureEnd - range.start, 0.0, lengthSeconds);
    return expected;
}

void checkExport(const ProbeDocument& report, const ExportExpectation& expected,
                 std::optional<std::int64_t> frames)
{
    const ProbeStream* video = report.firstStream("video");
    ExportedFile::requirePicture(report, expected.size);
    checkSound(report.firstStream("audio"), expected);
    const auto picture = secondsIn(video->duration);
    checkLength(picture ? picture : containerLength(report), expected.lengthSeconds, frames);
}

} // namespace stackreel
