#include "media/ProcessRunner.h"

#include "media/WorkerThread.h"

namespace stackreel
{

QCoro::Task<ProcessOutput> ProcessRunner::run(std::filesystem::path executable,
                                              std::vector<std::string> arguments, std::stop_token stop,
                                              LaunchCallback launched, std::vector<std::string> environment)
{
    ProcessSession session;
    const std::stop_callback cancelChild(stop, [&session] { session.cancel(); });
    co_return co_await onWorkerThread(
        [&] { return session.run(executable, arguments, launched, environment); });
}

} // namespace stackreel
