#include "cli/AbsolutePath.h"
#include "cli/ArgumentsText.h"
#include "cli/Commands.h"
#include "cli/ExportEvents.h"
#include "cli/ExportPlan.h"
#include "cli/Leftovers.h"
#include "cli/RecipeFile.h"
#include "cli/RenderedExport.h"
#include "media/MediaProbe.h"
#include "media/ToolLocator.h"
#include "model/ExportCheck.h"
#include "system/StandardStreams.h"
#include "system/SystemError.h"

#include <chrono>

namespace stackreel
{

namespace
{

using Clock = std::chrono::steady_clock;

void printArguments(const ExportRequest& request, bool json)
{
    const ExportCommand command = ExportCommandBuilder::build(request);
    StandardStreams::writeOutput(json ? ArgumentsText::json(command.arguments)
                                      : ArgumentsText::lines(command.arguments));
}

/// Says that the file is in place. It is, whether or not that can be said.
void announceSaved(const std::string& line)
{
    try {
        StandardStreams::writeOutput(line);
    } catch (const SystemError& error) {
        StandardStreams::writeError(std::string(error.what()) + "\n");
    }
}

/// Writes what the front could not do for the exported file to standard error.
void writeWarnings(const std::string& file, const std::vector<FrontChange>& changes)
{
    for (const FrontChange& change : changes)
        if (const std::string warning = change.warning(file); !warning.empty())
            StandardStreams::writeError(warning + "\n");
}

ExportFacts factsOf(const ExportRequest& request)
{
    return {.source = request.input,
            .file = request.output,
            .size = request.settings.size(),
            .seconds = ExportExpectation::of(request).lengthSeconds.value_or(0)};
}

ProgressStyle progressStyle(const ExportOptions& options, const std::filesystem::path& source)
{
    if (!options.json)
        return {.quiet = options.quiet};
    const auto report = [source](const Progress& progress) {
        StandardStreams::tryToWriteOutput(ExportEvents::progress(source, progress));
    };
    return {.quiet = options.quiet, .report = report};
}

ExportResult resultOf(const RenderedExport& rendered, const std::filesystem::path& file,
                      Clock::time_point begin)
{
    std::error_code error;
    const std::uintmax_t bytes = std::filesystem::file_size(file, error);
    return {.bytes = error ? std::nullopt : std::optional(bytes),
            .seconds = rendered.seconds,
            .elapsedSeconds = std::chrono::duration<double>(Clock::now() - begin).count(),
            .changes = rendered.changes};
}

QCoro::Task<> exportOne(ExportOptions options, std::stop_token stop)
{
    const auto begin = Clock::now();
    const std::filesystem::path input = absolutePath(options.source);
    requireFile(input);
    options.choices = co_await RecipeFile::choices(options, stop);
    const ProbeDocument source = co_await MediaProbe::report(input, stop);
    const ExportRequest request =
        planExport(options, MediaProbe::facts(source), SourceDetails::of(source).audioTracks);
    requireKnownLength(request.media, request.input);
    const Destination destination = Destination::check(request.input, request.output, options.overwrite);
    ToolLocator::locate(MediaTool::ffmpeg);
    // This thread creates and removes the file, even on a slow disk. It has nothing else to do meanwhile.
    PartialFile partial(destination, PartialFile::Name::hidden);
    if (options.saveRecipe)
        RecipeFile::save(request, *options.saveRecipe, options.overwrite);
    if (options.dryRun) {
        printArguments(request, options.json);
        co_return;
    }
    removeLeftovers(destination.file.parent_path());
    const ExportFacts facts = factsOf(request);
    if (options.json)
        StandardStreams::writeOutput(ExportEvents::started(facts));
    const RenderedExport rendered =
        co_await RenderedExport::render(partial, request, progressStyle(options, input), stop);
    announceSaved(options.json ? ExportEvents::finished(facts, resultOf(rendered, destination.file, begin))
                               : "Saved " + destination.named.filename().string() + "\n");
    writeWarnings(destination.named.filename().string(), rendered.changes);
}

/// The path for the report of a failure, absolute where possible.
std::filesystem::path reportedPath(const std::filesystem::path& path)
{
    std::error_code error;
    const auto absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute;
}

} // namespace

QCoro::Task<> Commands::exportVideo(ExportOptions options, std::stop_token stop)
{
    std::exception_ptr error;
    try {
        co_await exportOne(options, stop);
    } catch (...) {
        error = std::current_exception();
    }
    if (!error)
        co_return;
    if (options.json && !options.dryRun)
        StandardStreams::tryToWriteOutput(
            ExportEvents::failed(reportedPath(options.source), Failure::of(error)));
    std::rethrow_exception(error);
}

} // namespace stackreel
