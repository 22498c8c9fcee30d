#include "model/ExportCheck.h"

#include "framing/Decimal.h"
#include "framing/ExportRange.h"
#include "media/MediaProbe.h"
#include "media/ProbeNumbers.h"
#include "model/ExportError.h"
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

void checkLength(std::optional<double> length, double expected, std::int64_t frames)
{
    if (!length)
        ExportedFile::fail("its length is unknown.");
    const double picture = frames > 0 ? *length / static_cast<double>(frames) : 0;
    if (std::abs(*length - expected) <= std::min(0.5, expected / 2) + 2 * picture)
        return;
    const std::string lengths =
        "it lasts " + fixedDecimal(*length, 2) + " s instead of " + fixedDecimal(expected, 2) + " s. ";
    if (*length > expected)
        ExportedFile::fail(lengths + "The time stamps of the source may be damaged.");
    ExportedFile::fail(lengths +
                       "The source may be damaged, or its picture ends there: choose an earlier end.");
}

} // namespace

ExportExpectation ExportExpectation::of(const ExportRequest& request)
{
    const auto range = ExportRange::within(request.media.duration, request.trimStart, request.trimEnd);
    ExportExpectation expected;
    expected.size = request.settings.size();
    expected.audio = ExportCommandBuilder::carriesAudio(request);
    if (request.media.duration > 0)
        expected.lengthSeconds = std::min(range.length, request.media.duration - range.start);
    return expected;
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
    if (lengthSeconds)
        expected.lengthSeconds = std::clamp(content.pictureEnd - range.start, 0.0, *lengthSeconds);
    return expected;
}

void requireExpected(const ProbeDocument& report, const ExportExpectation& expected)
{
    const ProbeStream* video = report.firstStream("video");
    ExportedFile::requirePicture(report, expected.size);
    checkSound(report.firstStream("audio"), expected);
    if (!expected.lengthSeconds)
        return;
    const auto picture = secondsIn(video->duration);
    const auto frames = video->frames ? parseInteger(*video->frames) : std::nullopt;
    checkLength(picture ? picture : containerLength(report), *expected.lengthSeconds, frames.value_or(0));
}

QCoro::Task<> checkExport(ExportRequest request, ProbeDocument report, std::stop_token stop)
{
    const auto expected = ExportExpectation::of(request);
    try {
        requireExpected(report, expected);
        co_return;
    } catch (const ExportError&) {
        // What the source holds explains missing sound and another length only.
        requireExpected(report, {.size = expected.size,
                                 .audio = expected.audio,
                                 .audioMayBeMissing = true,
                                 .lengthSeconds = std::nullopt});
    }
    const auto range = ExportRange::within(request.media.duration, request.trimStart, request.trimEnd);
    const ProbeDocument source = co_await MediaProbe::report(request.input, stop);
    const auto content = co_await SourceContent::read(request.input, source, range.start,
                                                      range.start + range.length, request.audioTrack, stop);
    requireExpected(report, expected.within(request, content));
}

} // namespace stackreel
