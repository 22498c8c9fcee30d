#include "model/SourceExport.h"

#include "media/ProcessRunner.h"
#include "media/ToolFailure.h"
#include "media/ToolLocator.h"
#include "media/WorkerThread.h"
#include "model/ExportedFile.h"
#include "model/PictureCheck.h"

#include <string>
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

ToolRun prepare(const ExportRequest& request)
{
    auto executable = ToolLocator::locate(MediaTool::ffmpeg);
    return {.executable = std::move(executable), .arguments = ExportCommandBuilder::build(request).arguments};
}

/// Has the front report its changes only to a caller that reads the tool's standard error.
std::vector<std::string> environmentFor(const LaunchCallback& launched)
{
    return launched ? std::vector<std::string>{"STACKREEL_REPORT_CHANGES=1"} : std::vector<std::string>();
}

} // namespace

QCoro::Task<ProbeDocument> exportSource(ExportRequest request, std::stop_token stop, LaunchCallback launched)
{
    // Finding the tool accesses the disk, which may be slow.
    ToolRun tool = co_await onWorkerThread([&request] { return prepare(request); });
    std::vector<std::string> environment = environmentFor(launched);
    const ProcessOutput output = co_await ProcessRunner::run(tool.executable, std::move(tool.arguments), stop,
                                                             std::move(launched), std::move(environment));
    if (output.status != 0)
        throwToolFailure("FFmpeg", output);
    co_await onWorkerThread([&request] {
        ExportedFile::requireFile(request.output);
        return true;
    });
    co_await checkPictures(std::move(tool.executable), request, stop);
    co_return co_await ExportedFile::report(request.output, stop);
}

} // namespace stackreel
