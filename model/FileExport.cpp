#include "model/FileExport.h"

#include "media/CancellationError.h"
#include "media/ToolLocator.h"
#include "media/WorkerThread.h"
#include "model/ExportCheck.h"
#include "system/SystemError.h"
#include "system/TerminationSignals.h"

#include <exception>
#include <memory>
#include <utility>

namespace stackreel
{

namespace
{

using Partial = std::unique_ptr<PartialFile>;

Partial partialFileFor(const ExportRequest& request)
{
    const Destination destination = Destination::check(request.input, request.output, true);
    // Without a tool no file is created.
    ToolLocator::locate(MediaTool::ffmpeg);
    return std::make_unique<PartialFile>(destination, PartialFile::Name::visible);
}

/// Throws `ExportError` if the partial file is not in place, for which the tools report a missing file only.
/// Whether it is may be unknown, which is not an error.
QCoro::Task<> requireInPlace(const PartialFile& partial)
{
    try {
        co_await onWorkerThread([&partial] {
            partial.requireInPlace();
            return true;
        });
    } catch (const SystemError&) {
        // The failure of the tool is reported.
    }
}

/// Destroys the object, which removes a file that was neither moved nor kept.
QCoro::Task<> destroy(Partial partial)
{
    try {
        co_await onWorkerThread([&partial] {
            partial.reset();
            return true;
        });
    } catch (const SystemError&) {
        // Without another thread, the end of this function destroys the object.
    }
}

} // namespace

QCoro::Task<ProbeDocument> FileExport::run(PartialFile& partial, ExportRequest request, std::stop_token stop,
                                           LaunchCallback launched)
{
    request.output = partial.path();
    ProbeDocument report;
    std::exception_ptr failure;
    try {
        report = co_await exportSource(request, stop, std::move(launched));
    } catch (const CancellationError&) {
        throw;
    } catch (...) {
        failure = std::current_exception();
    }
    if (failure) {
        co_await requireInPlace(partial);
        std::rethrow_exception(failure);
    }
    co_await checkExport(std::move(request), report, stop);
    // Writing a large file through to disk takes seconds.
    co_await onWorkerThread([&partial, &stop] {
        partial.moveIntoPlace(stop);
        return true;
    });
    co_return report;
}

QCoro::Task<std::filesystem::path> FileExport::replace(ExportRequest request, WaitForTurn waitForTurn,
                                                       std::stop_token stop)
{
    auto wait = waitForTurn();
    const std::filesystem::path output = request.output;
    Partial partial = co_await onWorkerThread([&request] { return partialFileFor(request); });
    std::exception_ptr failure;
    ExportTurn turn;
    try {
        turn = co_await wait;
        co_await run(*partial, std::move(request), stop);
    } catch (...) {
        failure = std::current_exception();
        // A signal such as that of Ctrl+C reaches the tools as well. It cancels, even if the tool's failure
        // is known before the stop is requested.
        if (!stop.stop_requested() && !TerminationSignals::haveArrived())
            partial->keep();
    }
    co_await destroy(std::move(partial));
    if (failure)
        std::rethrow_exception(failure);
    co_return output;
}

} // namespace stackreel
