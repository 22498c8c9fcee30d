#include "cli/RenderedExport.h"

#include "media/ProbeNumbers.h"
#include "model/ExportCheck.h"
#include "model/FileExport.h"

namespace stackreel
{

namespace
{

double statedLength(const ProbeDocument& report)
{
    const bool isStated = report.format && report.format->duration;
    return isStated ? parseDecimal(*report.format->duration).value_or(0) : 0;
}

} // namespace

QCoro::Task<RenderedExport> RenderedExport::render(PartialFile& partial, ExportRequest request,
                                                   ProgressStyle progress, std::stop_token stop)
{
    ProgressDisplay display(ExportExpectation::of(request).lengthSeconds.value_or(0), std::move(progress));
    const LaunchCallback launched = [&display](const std::filesystem::path& file) { display.watch(file); };
    const ProbeDocument report = co_await FileExport::run(partial, std::move(request), stop, launched);
    display.finish();
    co_return RenderedExport{.seconds = statedLength(report), .changes = display.changes()};
}

} // namespace stackreel
