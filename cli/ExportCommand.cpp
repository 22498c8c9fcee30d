#include "cli/AbsolutePath.h"
#include "cli/ArgumentsText.h"
#include "cli/CliError.h"
#include "cli/Commands.h"
#include "cli/Destination.h"
#include "cli/ExportCheck.h"
#include "cli/ExportPlan.h"
#include "cli/ProgressDisplay.h"
#include "media/MediaProbe.h"
#include "media/MediaToolError.h"
#include "model/SourceExport.h"
#include "platform/StandardStreams.h"

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

/// Renders the request and shows the progress. Returns the last status of the encoder, if it printed one.
QCoro::Task<std::optional<EncoderStatus>> render(ExportRequest request, double lengthSeconds, bool quiet,
                                                 std::stop_token stop)
{
    ProgressDisplay display(lengthSeconds, quiet);
    const LaunchCallback launched = [&display](const std::filesystem::path& file) { display.watch(file); };
    co_await exportSource(std::move(request), stop, launched);
    co_return display.finish();
}

/// The report of ffprobe on the rendered file. Error messages do not contain the name of the hidden file,
/// because the user does not know it.
QCoro::Task<ProbeDocument> reportOnRendered(std::filesystem::path file, std::stop_token stop)
{
    std::error_code error;
    if (!std::filesystem::exists(file, error))
        throw CliError("FFmpeg ended without an error but wrote no file.");
    try {
        co_return co_await MediaProbe::report(file, stop);
    } catch (const MediaToolError& problem) {
        if (!std::holds_alternative<MediaToolError::ProcessFailed>(problem.value()))
            throw;
    } catch (const DecodingError&) {
        // Fall through to the error below.
    }
    throw CliError("FFmpeg ended without an error but wrote a file that cannot be read.");
}

} // namespace

QCoro::Task<> Commands::exportVideo(ExportOptions options, std::stop_token stop)
{
    const std::filesystem::path input = absolutePath(options.source);
    requireFile(input);
    const ProbeDocument source = co_await MediaProbe::report(input, stop);
    ExportRequest request = planExport(options, MediaProbe::facts(source));
    if (options.dryRun) {
        Destination::requireOther(request.input, request.output);
        printArguments(request, options.json);
        co_return;
    }
    requireKnownLength(request.media, request.input);
    const Destination destination = Destination::check(request.input, request.output, options.overwrite);
    const ExportExpectation expected = ExportExpectation::of(request, source);

    const PartialFile partial(destination);
    request.output = partial.path();
    const auto status = co_await render(request, expected.lengthSeconds, options.quiet, stop);
    const ProbeDocument report = co_await reportOnRendered(partial.path(), stop);
    checkExport(report, expected, status ? status->frames : std::nullopt);
    partial.moveIntoPlace();
    StandardStreams::writeOutput("Saved " + destination.named.filename().string() + "\n");
}

} // namespace stackreel
