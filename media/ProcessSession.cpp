#include "media/ProcessSession.h"

#include "media/CancellationError.h"
#include "media/ScratchDirectory.h"
#include "system/ChildProcess.h"
#include "system/Files.h"

#include <utility>

namespace stackreel
{

bool ProcessSession::isCancelled()
{
    const std::lock_guard guard(m_lock);
    return m_cancelled;
}

/// Sets the child that `cancel` terminates, or null when no child runs. Returns whether `cancel` was called
/// before.
bool ProcessSession::storeProcess(std::shared_ptr<ChildProcess> process)
{
    const std::lock_guard guard(m_lock);
    m_process.swap(process);
    return m_cancelled;
}

ProcessOutput ProcessSession::run(const std::filesystem::path& executable,
                                  const std::vector<std::string>& arguments, const LaunchCallback& launched,
                                  const std::vector<std::string>& environment)
{
    ScratchDirectory scratch;
    const auto outputFile = scratch.file("stdout");
    const auto errorFile = scratch.file("stderr");
    // A failure is ignored here, because opening the file below reports it.
    Files::createEmpty(outputFile);
    Files::createEmpty(errorFile);
    const WriteHandle output(outputFile);
    const WriteHandle error(errorFile);
    if (isCancelled())
        throw CancellationError();

    auto child = ChildProcess::launch({.executable = executable,
                                       .arguments = arguments,
                                       .standardOutput = output.descriptor(),
                                       .standardError = error.descriptor(),
                                       .environment = environment});
    if (storeProcess(child))
        child->terminate();
    if (launched)
        launched(errorFile);

    const int status = child->waitForExit();
    const bool endedBySignal = child->endedBySignal();
    const bool cancelled = storeProcess(nullptr);
    // `cancel` can no longer signal the child, so it can be reaped: from then on the system may reuse its
    // process id.
    child.reset();
    if (cancelled)
        throw CancellationError();

    output.synchronize();
    error.synchronize();
    return {.status = status,
            .standardOutput = Files::readAll(outputFile),
            .standardError = Files::readAll(errorFile),
            .endedBySignal = endedBySignal,
            .captureIsFull = output.isDiskFull()};
}

std::shared_ptr<ChildProcess> ProcessSession::runningChild()
{
    const std::lock_guard guard(m_lock);
    return m_process;
}

void ProcessSession::cancel()
{
    {
        const std::lock_guard guard(m_lock);
        m_cancelled = true;
    }
    if (const auto child = runningChild())
        child->terminate();
}

void ProcessSession::kill()
{
    if (const auto child = runningChild())
        child->kill();
}

} // namespace stackreel
