#include "model/PictureCheck.h"

#include "framing/Decimal.h"
#include "framing/ExportRange.h"
#include "media/ProcessRunner.h"
#include "media/TemporaryFolderFull.h"
#include "media/ToolFailure.h"
#include "media/ToolLocator.h"
#include "media/WorkerThread.h"
#include "model/ExportError.h"
#include "model/PictureComparison.h"
#include "model/SourceLuma.h"

#include <algorithm>
#include <array>

namespace stackreel
{

namespace
{

using Words = std::vector<std::string>;

// The duration of the end that is compared. The source is read a little further: if the first picture of the
// result came late, the last one may show a later moment of the source.
constexpr double endSeconds = 0.25;
constexpr double beyondSeconds = 0.04;
// For exact decoding, the source is read from this much earlier. In MPEG-TS, FFmpeg may seek past the key
// frame, and the pictures before the next one are then damaged.
constexpr double leadSeconds = 10;

std::string seconds(double value)
{
    return fixedDecimal(value, 3);
}

void append(Words& words, const Words& more)
{
    words.insert(words.end(), more.begin(), more.end());
}

/// The options to start reading at a time. There are none for a start at 0, because a seek to 0 skips
/// pictures of Flash files.
Words seek(double start)
{
    const std::string text = seconds(start);
    return text == "0.000" ? Words{} : Words{"-ss", text};
}

std::string crop(const PixelCrop& pixels)
{
    return "crop=w=" + std::to_string(pixels.width) + ":h=" + std::to_string(pixels.height) +
           ":x=" + std::to_string(pixels.x) + ":y=" + std::to_string(pixels.y);
}

/// A filter chain that makes a small picture of each picture of an input: both halves, and a row of grey
/// pixels that marks the input. `luma` are filters for the small pictures, each after a comma.
std::string branch(int input, const std::string& first, const std::string& top, const std::string& bottom,
                   const std::string& luma = "")
{
    static constexpr std::array marks = {"0x101010", "0x505050", "0x909090", "0xd0d0d0"};
    const std::string n = std::to_string(input);
    const std::string small = ",scale=32:32:flags=area" + luma + ",format=gray";
    return "[" + n + ":v:0]" + first + "split=2[a" + n + "][b" + n + "];[a" + n + "]" + top + small + "[t" +
           n + "];[b" + n + "]" + bottom + small + "[u" + n + "];[t" + n + "][u" + n +
           "]vstack=inputs=2,setsar=1,pad=32:65:0:0:color=" + marks.at(static_cast<std::size_t>(input)) +
           "[o" + n + "];";
}

/// `lead` is how long before the compared end the source is read, in seconds.
std::string filterGraph(const ExportRequest& request, Decoding decoding, double lead, const std::string& luma)
{
    const std::string top = crop(request.top.sourcePixels(request.media));
    const std::string bottom = crop(request.bottom.sourcePixels(request.media));
    const std::string upperHalf = "crop=iw:trunc(ih/2):0:0";
    const std::string lowerHalf = "crop=iw:trunc(ih/2):0:ih-trunc(ih/2)";
    const std::string only = "trim=end_frame=1,";
    const bool fast = decoding == Decoding::fast;
    const std::string sourceEnd = fast ? "reverse,trim=end_frame=4," : "trim=start=" + seconds(lead) + ",";
    const std::string last = fast ? "reverse,trim=end_frame=1," : "";
    return branch(0, only, top, bottom, luma) + branch(1, only, upperHalf, lowerHalf) +
           branch(2, sourceEnd, top, bottom, luma) + branch(3, last, upperHalf, lowerHalf) +
           "[o0][o1][o2][o3]concat=n=4[pictures]";
}

} // namespace

std::vector<std::string> pictureCheckArguments(const ExportRequest& request, Decoding decoding,
                                               const std::string& luma)
{
    const auto range = ExportRange::within(request.media.duration, request.trimStart, request.trimEnd);
    const double length = std::min(range.length, std::max(request.media.duration - range.start, 0.0));
    const double end = std::max(length - endSeconds, 0.0);
    const double lead = decoding == Decoding::fast ? 0 : std::min(end, leadSeconds);
    const Words input = {"-i", request.input.string()};
    const Words result = {"-i", request.output.string()};
    const Words options =
        decoding == Decoding::fast ? Words{"-skip_frame", "noref", "-skip_loop_filter", "all"} : Words{};

    Words words = {"-nostdin", "-v", "error"};
    append(words, seek(range.start));
    append(words, input);
    append(words, result);
    append(words, options);
    append(words, seek(range.start + end - lead));
    append(words, {"-t", seconds(lead + endSeconds + beyondSeconds)});
    append(words, input);
    append(words, options);
    append(words, seek(end));
    append(words, result);
    append(words, {"-filter_complex", filterGraph(request, decoding, lead, luma), "-map", "[pictures]",
                   "-fps_mode", "passthrough", "-f", "rawvideo", "-"});
    return words;
}

namespace
{

/// The error for a result that has another picture than the source at its start or end.
ExportError otherPicture(const std::string& begins)
{
    return ExportError("The exported video does not " + begins +
                       " with the picture of the source. The encoder of FFmpeg may be at fault.");
}

/// Whether a signal ended FFmpeg, which catches some of them and then exits with 255.
bool wasStopped(const ProcessOutput& output)
{
    return output.endedBySignal || output.status == 255;
}

/// Whether a picture can be decoded in the file at or after a time.
QCoro::Task<bool> hasPicture(std::filesystem::path ffmpeg, std::filesystem::path file, double start,
                             std::stop_token stop)
{
    Words words = {"-nostdin", "-v", "error"};
    append(words, seek(start));
    append(words, {"-i", file.string(), "-map", "0:v:0", "-frames:v", "1", "-vf", "scale=32:32,format=gray",
                   "-f", "rawvideo", "-"});
    const ProcessOutput output = co_await ProcessRunner::run(ffmpeg, std::move(words), stop);
    if (wasStopped(output))
        throwToolFailure("FFmpeg", output);
    if (output.captureIsFull)
        throw TemporaryFolderFull();
    co_return !output.standardOutput.empty();
}

/// Throws where the source has a picture at its start and the result has none. FFmpeg compares nothing then:
/// it cannot set up the filter graph.
QCoro::Task<> requireDecodableStart(std::filesystem::path ffmpeg, ExportRequest request, std::stop_token stop)
{
    if (co_await hasPicture(ffmpeg, request.output, 0, stop))
        co_return;
    const auto range = ExportRange::within(request.media.duration, request.trimStart, request.trimEnd);
    if (co_await hasPicture(ffmpeg, request.input, range.start, stop))
        throw otherPicture("begin");
}

/// The filters by which the source gets the luma of its export. The colour tables lie beside the front.
QCoro::Task<std::string> lumaFiltersFor(std::filesystem::path source, std::filesystem::path ffmpeg,
                                        std::stop_token stop)
{
    const auto ffprobe = co_await onWorkerThread([] { return ToolLocator::locate(MediaTool::ffprobe); });
    Words words = {"-v",
                   "error",
                   "-select_streams",
                   "v:0",
                   "-show_entries",
                   "stream=color_transfer",
                   "-of",
                   "default=noprint_wrappers=1:nokey=1",
                   "-i",
                   source.string()};
    const ProcessOutput output = co_await ProcessRunner::run(ffprobe, std::move(words), stop);
    co_return lumaFilters(output.standardOutput, ffmpeg.parent_path() / "colours");
}

/// What one run of FFmpeg has found.
enum class Finding { same, otherStart, otherEnd, noStart, stopped };

QCoro::Task<Finding> compare(std::filesystem::path ffmpeg, ExportRequest request, Decoding decoding,
                             std::string luma, std::stop_token stop)
{
    const ProcessOutput output =
        co_await ProcessRunner::run(ffmpeg, pictureCheckArguments(request, decoding, luma), stop);
    if (wasStopped(output) && decoding == Decoding::exact)
        throwToolFailure("FFmpeg", output);
    if (wasStopped(output))
        co_return Finding::stopped;
    if (output.captureIsFull)
        throw TemporaryFolderFull();
    const ComparedPictures pictures = ComparedPictures::parse(output.standardOutput);
    if (pictures.sourceStart.empty() && pictures.resultStart.empty())
        co_return Finding::noStart;
    if (!pictures.sameStart())
        co_return Finding::otherStart;
    co_return pictures.sameEnd() ? Finding::same : Finding::otherEnd;
}

} // namespace

QCoro::Task<> checkPictures(std::filesystem::path ffmpeg, ExportRequest request, std::stop_token stop)
{
    std::string converted;
    Finding finding = Finding::stopped;
    for (const Decoding decoding : {Decoding::fast, Decoding::exact})
        for (const bool convert : {false, true}) {
            if (convert && converted.empty())
                converted = co_await lumaFiltersFor(request.input, ffmpeg, stop);
            const std::string luma = convert ? converted : std::string();
            finding = co_await compare(ffmpeg, request, decoding, luma, stop);
            if (finding == Finding::same)
                co_return;
            if (finding == Finding::noStart)
                co_return co_await requireDecodableStart(ffmpeg, request, stop);
        }
    throw otherPicture(finding == Finding::otherEnd ? "end" : "begin");
}

} // namespace stackreel
