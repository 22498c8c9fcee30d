#include "cli/AbsolutePath.h"
#include "cli/ArgumentsText.h"
#include "cli/Commands.h"
#include "cli/ExportCheck.h"
#include "cli/ExportPlan.h"
#include "cli/Leftovers.h"
#include "cli/ProgressDisplay.h"
#include "cli/SourceContent.h"
#include "framing/ExportRange.h"
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

/// What is checked after an export.
struct Check {
    ExportRequest request;
    ProbeDocument source;
    ExportExpectation expected;
};

/// Throws where the report differs from what the source has in the range.
QCoro::Task<> checkWithContent(Check check, ProbeDocument report, std::optional<std::int64_t> frames,
                               std::stop_token stop)
{
    const ExportRequest& request = check.request;
    const auto range = ExportRange::within(request.media.duration, request.trimStart, request.trimEnd);
    const auto content = co_await SourceContent::read(request.input, check.source, range.start,
                                                      range.start + range.length, stop);
    checkExport(report, check.expected.within(request, content), frames);
}

/// Checks the report, and looks into the source only where the report is not as the source states.
QCoro::Task<> checkReport(Check check, ProbeDocument report, std::optional<std::int64_t> frames,
                          std::stop_token stop)
{
    try {
        checkExport(report, check.expected, frames);
        co_return;
    } catch (const ExportError&) {
        // Checked again below.
    }
    co_await checkWithContent(std::move(check), std::move(report), frames, stop);
}

/// Renders the request into the destination and shows the progress.
QCoro::Task<> render(PartialFile& partial, ExportRequest request, ProbeDocument source, bool quiet,
                     std::stop_token stop)
{
    const Check check = {
        .request = request, .source = std::move(source), .expected = ExportExpectation::of(request)};
    ProgressDisplay display(check.expected.lengthSeconds, quiet);
    const LaunchCallback launched = [&display](const std::filesystem::path& file) { display.watch(file); };
    const ReportCheck checked = [&](ProbeDocument report) {
        const auto status = display.finish();
        return checkReport(check, std::move(report), status ? status->frames : std::nullopt, stop);
    };
    co_await FileExport::run(partial, std::move(request), checked, stop, launched);
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
    // This thread creates and removes the file, even on a slow disk. It has nothing else to do meanwhile.
    PartialFile partial(destination, PartialFile::Name::hidden);
    if (options.dryRun) {
        printArguments(request, options.json);
        co_return;
    }
    removeLeftovers(destination.file.parent_path());
    co_await render(partial, std::move(request), source, options.quiet, stop);
    announceSaved(destination.named);
}

} // namespace stackreel
