#include "media/MediaPipeline.h"

#include "media/CancellationError.h"
#include "media/MediaToolError.h"
#include "media/PreviewCopies.h"
#include "media/ProcessRunner.h"
#include "media/ToolFailure.h"
#include "media/ToolLocator.h"
#include "media/WorkerThread.h"
#include "system/Files.h"
#include "system/SystemError.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <system_error>

namespace stackreel
{

namespace
{

struct CopyRun {
    std::filesystem::path executable;
    std::filesystem::path copy;
};

CopyRun prepareCopy()
{
    auto executable = ToolLocator::locate(MediaTool::ffmpeg);
    return {.executable = std::move(executable), .copy = PreviewCopies::newFile()};
}

bool removeCopy(const std::filesystem::path& copy) noexcept
{
    std::error_code ignored;
    return std::filesystem::remove(copy, ignored);
}

/// Runs the tool. Deletes the partial preview copy of a cancelled run, because nothing would use it.
QCoro::Task<ProcessOutput> runTool(CopyRun run, std::vector<std::string> arguments, std::stop_token stop)
{
    std::exception_ptr cancellation;
    try {
        co_return co_await ProcessRunner::run(run.executable, std::move(arguments), stop);
    } catch (const CancellationError&) {
        cancellation = std::current_exception();
    }
    try {
        co_await onWorkerThread([&run] { return removeCopy(run.copy); });
    } catch (const SystemError&) {
        removeCopy(run.copy); // the system starts no more threads
    }
    std::rethrow_exception(cancellation);
}

/// Removes the preview copy of a failed run if the disk is full, because other work needs the space. Returns
/// whether it was removed.
bool removeIfDiskIsFull(const std::filesystem::path& copy)
{
    try {
        return WriteHandle(copy).isDiskFull() && removeCopy(copy);
    } catch (const SystemError&) {
        return false; // the file cannot be opened
    }
}

std::vector<std::string> copyArguments(const std::filesystem::path& source, const std::filesystem::path& copy)
{
    return {"-hide_banner",
            "-y",
            "-i",
            source.string(),
            "-map",
            "0:v:0",
            "-an",
            "-vf",
            "scale=960:-2:force_original_aspect_ratio=decrease,format=yuv420p",
            "-c:v",
            "h264_videotoolbox",
            "-allow_sw",
            "1",
            "-b:v",
            "2M",
            "-movflags",
            "+faststart",
            copy.string()};
}

std::vector<MediaTime> sliceCentres(double duration, int count)
{
    std::vector<MediaTime> times;
    for (int index = 0; index < count; ++index)
        times.push_back(MediaTime::fromSeconds((index + 0.5) / count * duration));
    return times;
}

std::vector<Still> takeStills(Stills& stills, const StillRequest& request, std::stop_token stop)
{
    std::vector<Still> taken;
    stills.take(request, std::move(stop), [&taken](Still still) {
        if (still.frame.pixels != nullptr)
            taken.push_back(std::move(still));
    });
    return taken;
}

std::vector<VideoFrame> inTimeOrder(std::vector<Still> stills)
{
    std::stable_sort(stills.begin(), stills.end(), [](const Still& left, const Still& right) {
        return left.requestedTime.seconds() < right.requestedTime.seconds();
    });
    std::vector<VideoFrame> frames;
    for (Still& still : stills)
        frames.push_back(std::move(still.frame));
    return frames;
}

} // namespace

QCoro::Task<std::filesystem::path> MediaPipeline::previewSource(std::filesystem::path source,
                                                                StillsPtr stills, std::stop_token stop)
{
    const bool usable = co_await onWorkerThread([&] { return stills->isPlayable(source, stop); });
    if (usable)
        co_return source;
    co_return co_await createPreview(source, stop);
}

QCoro::Task<std::filesystem::path> MediaPipeline::createPreview(std::filesystem::path source,
                                                                std::stop_token stop)
{
    // Finding the tool and creating the folder access the disk, which may be slow.
    const CopyRun run = co_await onWorkerThread(prepareCopy);
    auto arguments = copyArguments(source, run.copy);
    const ProcessOutput output = co_await runTool(run, std::move(arguments), stop);
    if (output.status != 0) {
        try {
            co_await onWorkerThread([&run] { return removeIfDiskIsFull(run.copy); });
        } catch (const SystemError&) {
            // Without another thread it stays; the failure of the tool is reported.
        }
        throwToolFailure("FFmpeg", output);
    }
    co_return run.copy;
}

QCoro::Task<std::vector<VideoFrame>> MediaPipeline::timelineThumbnails(std::filesystem::path file,
                                                                       double duration, int count,
                                                                       StillsPtr stills, std::stop_token stop)
{
    if (!std::isfinite(duration) || duration <= 0 || count < 1)
        co_return std::vector<VideoFrame>();
    try {
        co_return co_await onWorkerThread([&] {
            const StillRequest request = {.file = file,
                                          .times = sliceCentres(duration, count),
                                          .maximumWidth = 320,
                                          .maximumHeight = 180,
                                          .tolerance = MediaTime::fromSeconds(0.5)};
            return inTimeOrder(takeStills(*stills, request, stop));
        });
    } catch (const std::exception&) {
        // The timeline also works without thumbnails, so a lack of memory or threads must not make the load
        // fail.
        co_return std::vector<VideoFrame>();
    }
}

} // namespace stackreel
