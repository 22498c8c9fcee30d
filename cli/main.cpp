#include "cli/CliOptions.h"
#include "cli/Commands.h"
#include "cli/Failure.h"
#include "system/CleanupProcess.h"
#include "system/RunningChildren.h"
#include "system/StandardStreams.h"
#include "system/TerminationSignals.h"

#include <QCoreApplication>
#include <QCoroTask>

#include <exception>
#include <stop_token>
#include <string>

namespace
{

using namespace stackreel;

enum Status { done = 0, failed = 1, signalled = 128 };

/// Runs the command in the options. Throws the errors of the command.
QCoro::Task<> perform(CliOptions options, std::stop_token stop)
{
    if (const auto* probe = std::get_if<ProbeOptions>(&options))
        co_await Commands::probe(*probe, stop);
    else if (const auto* exporting = std::get_if<ExportOptions>(&options))
        co_await Commands::exportVideo(*exporting, stop);
    else if (const auto* exportingMany = std::get_if<ExportManyOptions>(&options))
        co_await Commands::exportMany(*exportingMany, stop);
    else if (const auto* information = std::get_if<Information>(&options))
        StandardStreams::writeOutput(information->text);
    else
        throw std::get<UsageError>(options);
}

/// Runs the command, prints an error when it fails, and returns the program's exit status.
QCoro::Task<int> statusOf(CliOptions options, TerminationSignals& signals)
{
    std::exception_ptr error;
    try {
        co_await perform(std::move(options), signals.stopToken());
        co_return done;
    } catch (...) {
        error = std::current_exception();
    }
    const Failure failure = Failure::of(error);
    const int signal = signals.finish();
    StandardStreams::writeError((signal != 0 ? "Cancelled." : failure.text()) + "\n");
    co_return signal != 0 ? signalled + signal : failure.status;
}

/// Suppresses Qt's warning about a locale that is not UTF-8. The program does not depend on the locale.
void ignoreMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

int run(int argc, char* argv[])
{
    TerminationSignals signals;
    const CliOptions options = parseOptions({argv + (argc > 0 ? 1 : 0), argv + argc});

    const QtMessageHandler previous = qInstallMessageHandler(ignoreMessage);
    // Qt gets the program's name only. Otherwise it would remove the options that it knows from the
    // arguments.
    int ownName = argc > 0 ? 1 : 0;
    const QCoreApplication application(ownName, argv);
    qInstallMessageHandler(previous);
    // `ProcessRunner` kills a cancelled tool that does not end. The second signal does not wait for that.
    const std::stop_callback killTools(signals.repeatToken(), [] { RunningChildren::kill(); });
    return QCoro::waitFor(statusOf(options, signals));
}

} // namespace

int main(int argc, char* argv[])
{
    StandardStreams::prepare();
    CleanupProcess::start();
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        StandardStreams::writeError(std::string(error.what()) + "\n");
        return failed;
    }
}
