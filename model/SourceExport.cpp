#include "model/SourceExport.h"

#include "media/ProcessRunner.h"
#include "media/ToolFailure.h"
#include "media/ToolLocator.h"
#include "media/WorkerThread.h"
#include "model/ExportedFile.h"
#include "model/PictureCheck.h"
#include "model/Recipe.h"

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

/// What the front is asked for beyond the arguments: to write the recipe into the file and, for a caller that
/// reads the tool's standard error, to report its changes.
std::vector<std::string> environmentFor(const ExportRequest& request, bool isRead)
{
    std::vector<std::string> variables = {"STACKREEL_RECIPE=" + Recipe::of(request).json()};
    if (isRead)
        variables.emplace_back("STACKREEL_REPORT_CHANGES=1");
    return variables;
}

} // namespace

QCoro::Task<ProbeDocument> exportSource(ExportRequest request, std::stop_token stop, LaunchCallback launched)
{
    // Finding the tool accesses the disk, which may be slow.
    ToolRun tool = co_await onWorkerThread([&request] { return prepare(request); });
    std::vector<std::string> environment = environmentFor(request, launched != nullptr);
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
