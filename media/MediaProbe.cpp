#include "media/MediaProbe.h"

#include "media/MediaToolError.h"
#include "media/ProbeNumbers.h"
#include "media/ProcessRunner.h"
#include "media/TemporaryFolderFull.h"
#include "media/ToolFailure.h"
#include "media/ToolLocator.h"
#include "media/WorkerThread.h"

namespace stackreel
{

namespace
{

std::optional<std::int64_t> rotationInSideData(const ProbeStream& video)
{
    if (!video.sideDataList)
        return std::nullopt;
    for (const ProbeSideData& entry : *video.sideDataList)
        if (entry.rotation)
            return entry.rotation;
    return std::nullopt;
}

std::int64_t rotationInTags(const ProbeStream& video)
{
    if (!video.tags)
        return 0;
    const auto tag = video.tags->find("rotate");
    return tag == video.tags->end() ? 0 : parseInteger(tag->second).value_or(0);
}

std::optional<double> seconds(const std::optional<std::string>& text)
{
    return text ? parseDecimal(*text) : std::nullopt;
}

ProbeDocument decoded(const ProcessOutput& output)
{
    try {
        return ProbeDocument::decode(output.standardOutput);
    } catch (const DecodingError&) {
        // The tool ends with status 0 even if its report could not be written to the end.
        if (output.captureIsFull)
            throw TemporaryFolderFull();
        throw;
    }
}

double durationOf(const ProbeStream& video, const std::optional<ProbeFormat>& format)
{
    if (const auto ofStream = seconds(video.duration))
        return *ofStream;
    return format ? seconds(format->duration).value_or(0) : 0;
}

} // namespace

QCoro::Task<ProbeDocument> MediaProbe::report(std::filesystem::path source, std::stop_token stop)
{
    // Finding the tool accesses the disk, which may be slow.
    const auto executable = co_await onWorkerThread([] { return ToolLocator::locate(MediaTool::ffprobe); });
    std::vector<std::string> arguments = {"-v",  "error", "-show_streams", "-show_format",
                                          "-of", "json",  source.string()};
    const ProcessOutput output = co_await ProcessRunner::run(executable, std::move(arguments), stop);
    if (output.status != 0)
        throwToolFailure("ffprobe", output);
    // Decoding is done on the worker thread, too, because a report can be long: tags may contain any text.
    co_return co_await onWorkerThread([&output] { return decoded(output); });
}

MediaInfo MediaProbe::facts(const ProbeDocument& document)
{
    const ProbeStream* video = document.firstStream("video");
    if (video == nullptr || !video->width || !video->height)
        throw MediaToolError::noVideo();
    const ProbeStream* audio = document.firstStream("audio");

    MediaInfo info;
    info.width = *video->width;
    info.height = *video->height;
    const auto rotation = rotationInSideData(*video);
    info.rotation = rotation ? *rotation : rotationInTags(*video);
    info.duration = durationOf(*video, document.format);
    info.videoCodec = video->codecName.value_or("unknown");
    info.audioCodec = audio != nullptr ? audio->codecName : std::nullopt;
    if (info.displayedWidth() <= info.displayedHeight())
        throw MediaToolError::verticalSource();
    return info;
}

QCoro::Task<MediaInfo> MediaProbe::inspect(std::filesystem::path source, std::stop_token stop)
{
    const ProbeDocument document = co_await report(std::move(source), stop);
    co_return facts(document);
}

} // namespace stackreel
