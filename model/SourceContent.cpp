#include "model/SourceContent.h"

#include "framing/Decimal.h"
#include "media/ProbeNumbers.h"
#include "media/ProcessRunner.h"
#include "media/ToolFailure.h"
#include "media/ToolLocator.h"
#include "media/WorkerThread.h"

#include <algorithm>
#include <string>
#include <vector>

namespace stackreel
{

namespace
{

// A packet of sound this close to the range's ends need not be in the export.
constexpr double soundTolerance = 0.1;

/// The text up to the separator, which is removed with it.
std::string_view takeUntil(std::string_view& text, char separator)
{
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return taken;
}

struct Packet {
    std::int64_t stream = 0;
    double time = 0;
    double duration = 0;
};

/// A line such as "packet,0,2.960000,2.880000,0.040000": the stream, the times of presentation and decoding,
/// and the duration. AVI files, and some Matroska files, have no times of presentation.
std::optional<Packet> parsePacket(std::string_view line)
{
    if (takeUntil(line, ',') != "packet")
        return std::nullopt;
    const auto stream = parseInteger(takeUntil(line, ','));
    const auto presented = parseDecimal(takeUntil(line, ','));
    const auto decoded = parseDecimal(takeUntil(line, ','));
    const auto time = presented ? presented : decoded;
    const auto duration = parseDecimal(takeUntil(line, ','));
    if (!stream || !time)
        return std::nullopt;
    return Packet{.stream = *stream, .time = *time, .duration = duration.value_or(0)};
}

/// The start in a line such as "format,1.400000"; 0 where it is not stated.
double startIn(std::string_view packets)
{
    const std::size_t at = packets.rfind("format,");
    if (at == std::string_view::npos)
        return 0;
    packets.remove_prefix(at + std::string_view("format,").size());
    return parseDecimal(takeUntil(packets, '\n')).value_or(0);
}

/// The index of the stream with this codec type and this number among them, counted from 0; -1 where there is
/// none.
std::int64_t indexOf(const ProbeDocument& source, std::string_view codecType, std::int64_t number)
{
    for (std::size_t index = 0; index < source.streams.size(); ++index)
        if (source.streams[index].codecType == codecType && number-- == 0)
            return static_cast<std::int64_t>(index);
    return -1;
}

} // namespace

SourceContent SourceContent::parse(std::string_view packets, const ProbeDocument& source, double from,
                                   double to, std::int64_t audioTrack)
{
    const double start = startIn(packets);
    const std::int64_t picture = indexOf(source, "video", 0);
    const std::int64_t sound = indexOf(source, "audio", audioTrack);
    SourceContent content{.start = start};
    while (!packets.empty()) {
        const auto packet = parsePacket(takeUntil(packets, '\n'));
        if (!packet)
            continue;
        const double time = packet->time - start;
        const double end = time + packet->duration;
        content.end = std::max(content.end, end);
        if (packet->stream == picture)
            content.pictureEnd = std::max(content.pictureEnd, end);
        else if (packet->stream == sound && time >= from + soundTolerance && time < to - soundTolerance)
            content.hasSound = true;
    }
    return content;
}

QCoro::Task<SourceContent> SourceContent::read(std::filesystem::path file, ProbeDocument source, double from,
                                               double to, std::int64_t audioTrack, std::stop_token stop)
{
    const auto executable = co_await onWorkerThread([] { return ToolLocator::locate(MediaTool::ffprobe); });
    std::vector<std::string> arguments = {
        "-v",
        "error",
        "-read_intervals",
        fixedDecimal(from, 3) + "%",
        "-show_entries",
        "packet=stream_index,pts_time,dts_time,duration_time:format=start_time",
        "-of",
        "csv",
        file.string()};
    const ProcessOutput output = co_await ProcessRunner::run(executable, std::move(arguments), stop);
    if (output.status != 0)
        throwToolFailure("ffprobe", output);
    co_return parse(output.standardOutput, source, from, to, audioTrack);
}

} // namespace stackreel
