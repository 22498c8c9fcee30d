#include "model/SourceExport.h"

#include "media/MediaToolError.h"
#include "media/ProcessRunner.h"
#include "media/ToolLocator.h"
#include "media/WorkerThread.h"
#include "model/PictureCheck.h"

#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace stackreel
{

namespace
{

struct ToolRun {
    std::filesystem::path executable;
    std::vector<std::string> arguments;
};

/// Throws if both paths lead to the same file, even under different names. Rendering would overwrite the
/// source before it is read, and the clean-up after a cancellation would delete it.
void requireOtherFile(const std::filesystem::path& source, const std::filesystem::path& destination)
{
    std::error_code error;
    if (std::filesystem::equivalent(source, destination, error) && !error)
        throw std::runtime_error("“" + destination.filename().string() +
                                 "” is the source itself, which is never overwritten.");
}

ToolRun prepare(const ExportRequest& request)
{
    requireOtherFile(request.input, request.output);
    auto executable = ToolLocator::locate(MediaTool::ffmpeg);
    return {.executable = std::move(executable), .arguments = ExportCommandBuilder::build(request).arguments};
}

} // namespace

QCoro::Task<std::filesystem::path> exportSource(ExportRequest request, std::stop_token stop,
                                                LaunchCallback launched)
{
    // Finding the tool accesses the disk, which may be slow.
    ToolRun tool = co_await onWorkerThread([&request] { return prepare(request); });
    const ProcessOutput output =
        co_await ProcessRunner::run(tool.executable, std::move(tool.arguments), stop, std::move(launched));
    if (output.status != 0)
        throw MediaToolError::processFailed("FFmpeg", output.status, output.errorText());
    co_await checkPictures(std::move(tool.executable), request, stop);
    co_return request.output;
}

} // namespace stackreel
