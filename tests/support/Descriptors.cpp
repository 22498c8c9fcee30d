#include "tests/support/Descriptors.h"

#include <dirent.h>
#include <sys/wait.h>

#include <cerrno>
#include <cstdlib>

namespace stackreel
{

std::set<int> openDescriptors()
{
    std::set<int> descriptors;
    DIR* directory = ::opendir("/proc/self/fd");
    while (const dirent* entry = ::readdir(directory))
        if (entry->d_name[0] != '.')
            descriptors.insert(std::atoi(entry->d_name));
    descriptors.erase(::dirfd(directory));
    ::closedir(directory);
    return descriptors;
}

bool hasChildren()
{
    siginfo_t info{};
    return ::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == 0 || errno != ECHILD;
}

ScopedDescriptorLimit::ScopedDescriptorLimit()
{
    ::getrlimit(RLIMIT_NOFILE, &m_before);
    const rlimit highest = {.rlim_cur = m_before.rlim_max, .rlim_max = m_before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &highest);
}

ScopedDescriptorLimit::ScopedDescriptorLimit(rlim_t count)
{
    ::getrlimit(RLIMIT_NOFILE, &m_before);
    const rlimit limit = {.rlim_cur = count, .rlim_max = m_before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &limit);
}

ScopedDescriptorLimit::~ScopedDescriptorLimit()
{
    ::setrlimit(RLIMIT_NOFILE, &m_before);
}

} // namespace stackreel
