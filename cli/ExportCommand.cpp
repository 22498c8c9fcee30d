#include "cli/AbsolutePath.h"
#include "cli/ArgumentsText.h"
#include "cli/Commands.h"
#include "cli/ExportCheck.h"
#include "cli/ExportPlan.h"
#include "cli/ProgressDisplay.h"
#include "media/MediaProbe.h"
#include "media/ToolLocator.h"
#include "model/FileExport.h"
#include "platform/StandardStreams.h"
#include "platform/SystemError.h"

namespace stackreel
{

namespace
{

void printArguments(const ExportRequest& request, bool json)
{
    const ExportCommand command = ExportCommandBuilder::build(request);
    StandardStreams::writeOutput(json ? ArgumentsText::json(command.arguments)
                                      : ArgumentsText::lines(command.arguments));
}

/// Renders the request into the destination and shows the progress.
QCoro::Task<> render(PartialFile& partial, ExportRequest request, ExportExpectation expected, bool quiet,
                     std::stop_token stop)
{
    ProgressDisplay display(expected.lengthSeconds, quiet);
    const LaunchCallback launched = [&display](const std::filesystem::path& file) { display.watch(file); };
    const ReportCheck check = [&](const ProbeDocument& report) {
        const auto status = display.finish();
        checkExport(report, expected, status ? status->frames : std::nullopt);
    };
    co_await FileExport::run(partial, std::move(request), check, stop, launched);
}

/// Says that the file is in place. It is, whether or not that can be said.
void announceSaved(const std::filesystem::path& file)
{
    try {
        StandardStreams::writeOutput("Saved " + file.filename().string() + "\n");
    } catch (const SystemError& error) {
        StandardStreams::writeError(std::string(error.what()) + "\n");
    }
}

} // namespace

QCoro::Task<> Commands::exportVideo(ExportOptions options, std::stop_token stop)
{
    const std::filesystem::path input = absolutePath(options.source);
    requireFile(input);
    const ProbeDocument source = co_await MediaProbe::report(input, stop);
    ExportRequest request = planExport(options, MediaProbe::facts(source));
    requireKnownLength(request.media, request.input);
    const Destination destination = Destination::check(request.input, request.output, options.overwrite);
    ToolLocator::locate(MediaTool::ffmpeg);
    PartialFile partial(destination, PartialFile::Name::hidden);
    if (options.dryRun) {
        printArguments(request, options.json);
        co_return;
    }
    const ExportExpectation expected = ExportExpectation::of(request, source);
    co_await render(partial, std::move(request), expected, options.quiet, stop);
    announceSaved(destination.named);
}

} // namespace stackreel
