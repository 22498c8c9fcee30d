// Uses the media layer in a separate process, for what a test cannot do in its own process. The first
// argument is the command:
//   closed RESULT CHILD NUMBERS  closes the descriptors whose digits (0, 1, 2) are given, runs the test child
//                                and writes its results to RESULT
//   locate TOOL FOLDER…          prints the path of the tool that is found from each working directory
//   probe SOURCE                 prints the properties of a source, or the error
//   search SOURCE                starts a probe without a tool, and prints whether it ends at once or later
//   cost SOURCE                  prints the processor time, in seconds, that a probe takes on the calling
//   thread

#include "media/CancellationError.h"
#include "media/MediaProbe.h"
#include "media/MediaToolError.h"
#include "media/ProcessRunner.h"
#include "media/ToolLocator.h"
#include "system/SystemError.h"
#include "tests/support/Awaited.h"

#include <QCoreApplication>

#include <unistd.h>

#include <ctime>
#include <fstream>
#include <iostream>

using namespace stackreel;

namespace
{

using Arguments = std::vector<std::string>;

ProcessOutput runChild(const std::string& child, const Arguments& arguments)
{
    return runToEnd(ProcessRunner::run(child, arguments));
}

void closed(const Arguments& arguments)
{
    for (const char digit : arguments.at(2))
        ::close(digit - '0');
    int count = 1;
    char name[] = "media-host";
    char* names[] = {name, nullptr};
    const QCoreApplication application(count, names);
    const std::string& child = arguments.at(1);
    const ProcessOutput descriptors = runChild(child, {"descriptors"});
    const ProcessOutput failing = runChild(child, {"exit", "3"});
    std::ofstream result(arguments.at(0));
    result << descriptors.standardOutput << failing.status << "\n"
           << failing.standardOutput << failing.standardError;
}

void locate(const Arguments& arguments)
{
    const MediaTool tool = arguments.at(0) == "ffmpeg" ? MediaTool::ffmpeg : MediaTool::ffprobe;
    for (const std::string& folder : Arguments(arguments.begin() + 1, arguments.end())) {
        std::filesystem::current_path(folder);
        if (folder.ends_with("deleted"))
            std::filesystem::remove(folder);
        try {
            std::cout << ToolLocator::locate(tool).string() << "\n";
        } catch (const MediaToolError& error) {
            std::cout << error.what() << "\n";
        }
    }
}

/// A `QCoreApplication` of this program.
struct Application {
    int count = 1;
    char name[11] = "media-host";
    char* names[2] = {name, nullptr};
    QCoreApplication application{count, names};
};

void probe(const Arguments& arguments)
{
    const Application application;
    try {
        const MediaInfo info = runToEnd(MediaProbe::inspect(arguments.at(0)));
        std::cout << info.width << "x" << info.height << " " << info.rotation << " " << info.duration << " "
                  << info.videoCodec << " " << info.audioCodec.value_or("(none)") << "\n";
    } catch (const MediaToolError& error) {
        if (const auto* failure = std::get_if<MediaToolError::ProcessFailed>(&error.value()))
            std::cout << failure->tool << " " << failure->status << " ";
        std::cout << "MediaToolError: " << error.what() << "\n";
    } catch (const DecodingError& error) {
        std::cout << "DecodingError: " << error.what() << "\n";
    } catch (const SystemError& error) {
        std::cout << "SystemError: " << error.code().value() << "\n";
    }
}

void search(const Arguments& arguments)
{
    const Application application;
    Awaited<ProbeDocument> searching(MediaProbe::report(arguments.at(0)));
    const bool endedAtOnce = searching.hasEnded();
    try {
        searching.result();
    } catch (const MediaToolError& error) {
        std::cout << (endedAtOnce ? "at once: " : "later: ") << error.what() << "\n";
    }
}

double processorSeconds()
{
    timespec used{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) + 1e-9 * static_cast<double>(used.tv_nsec);
}

void cost(const Arguments& arguments)
{
    const Application application;
    const double before = processorSeconds();
    runToEnd(MediaProbe::inspect(arguments.at(0)));
    std::cout << processorSeconds() - before << "\n";
}

} // namespace

int main(int count, char** all)
{
    const Arguments arguments(all + 2, all + count);
    const std::string mode = all[1];
    if (mode == "closed")
        closed(arguments);
    else if (mode == "locate")
        locate(arguments);
    else if (mode == "probe")
        probe(arguments);
    else if (mode == "search")
        search(arguments);
    else if (mode == "cost")
        cost(arguments);
    else
        return 64;
    return 0;
}
