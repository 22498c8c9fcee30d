#include "cli/RenderedExport.h"

#include "cli/ExportCheck.h"
#include "cli/SourceContent.h"
#include "framing/ExportRange.h"
#include "media/ProbeNumbers.h"
#include "model/ExportError.h"
#include "model/FileExport.h"

namespace stackreel
{

namespace
{

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
                                                      range.start + range.length, request.audioTrack, stop);
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

double statedLength(const ProbeDocument& report)
{
    const bool isStated = report.format && report.format->duration;
    return isStated ? parseDecimal(*report.format->duration).value_or(0) : 0;
}

} // namespace

QCoro::Task<RenderedExport> RenderedExport::render(PartialFile& partial, ExportRequest request,
                                                   ProbeDocument source, ProgressStyle progress,
                                                   std::stop_token stop)
{
    const Check check = {
        .request = request, .source = std::move(source), .expected = ExportExpectation::of(request)};
    ProgressDisplay display(check.expected.lengthSeconds, std::move(progress));
    RenderedExport rendered;
    const LaunchCallback launched = [&display](const std::filesystem::path& file) { display.watch(file); };
    const ReportCheck checked = [&](ProbeDocument report) {
        const auto status = display.finish();
        rendered = {.seconds = statedLength(report), .changes = display.changes()};
        return checkReport(check, std::move(report), status ? status->frames : std::nullopt, stop);
    };
    co_await FileExport::run(partial, std::move(request), checked, stop, launched);
    co_return rendered;
}

} // namespace stackreel
