#include "tests/campaign/ProcessFigures.h"

#include "tests/support/Descriptors.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>

namespace stackreel
{

namespace
{

/// A line of /proc/self/smaps_rollup, in MiB.
double mapped(const std::string& wanted)
{
    std::ifstream file("/proc/self/smaps_rollup");
    std::string word;
    double kibibytes = 0;
    while (file >> word)
        if (word == wanted) {
            file >> kibibytes;
            break;
        }
    return kibibytes / 1024;
}

std::string nameOf(const std::filesystem::path& thread)
{
    std::string name;
    std::getline(std::ifstream(thread / "comm"), name);
    return name;
}

} // namespace

int threadCount()
{
    const std::filesystem::directory_iterator threads("/proc/self/task");
    return static_cast<int>(std::count_if(begin(threads), end(threads), [](const auto& thread) {
        return nameOf(thread.path()) != "GstSystemClock";
    }));
}

ProcessFigures ProcessFigures::now()
{
    return {.memory = mapped("Anonymous:"),
            .resident = mapped("Rss:"),
            .descriptors = static_cast<int>(openDescriptors().size()),
            .threads = threadCount()};
}

} // namespace stackreel
