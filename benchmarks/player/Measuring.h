#pragma once

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <vector>

namespace stackreel
{

inline double milliseconds(std::chrono::steady_clock::duration duration)
{
    return std::chrono::duration<double, std::milli>(duration).count();
}

/// The median of at least one value.
inline double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// The processor time of this process so far, in seconds.
inline double processorSeconds()
{
    rusage usage;
    ::getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// The resident memory of this process now, in MiB.
inline double residentMemory()
{
    long pages = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return static_cast<double>(resident) * static_cast<double>(::sysconf(_SC_PAGESIZE)) / (1 << 20);
}

/// The peak resident memory of this process, in MiB.
inline double peakMemory()
{
    rusage usage;
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

} // namespace stackreel
