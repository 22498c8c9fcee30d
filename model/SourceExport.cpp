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

} // namespace

QCoro::Task<ProbeDocument> exportSource(ExportRequest request, std::stop_token stop, LaunchCallback launched)
{
    // Finding the tool accesses the disk, which may be slow.
    ToolRun tool = co_await onWorkerThread([&request] { return prepare(request); });
    const ProcessOutput output =
        co_await ProcessRunner::run(tool.executable, std::move(tool.arguments), stop, std::move(launched));
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
