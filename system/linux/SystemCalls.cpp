#include "system/SystemCalls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

namespace stackreel
{

SystemCalls& systemCalls()
{
    static SystemCalls calls = {
        .openat = [](int folder, const char* path, int flags,
                     mode_t mode) { return ::openat(folder, path, flags, mode); },
        .close = ::close,
        .fstatat = ::fstatat,
        .fsync = ::fsync,
        .fallocate = ::fallocate,
        .read = ::read,
        .mkdir = ::mkdir,
        .posixSpawn = ::posix_spawn,
        .waitid = ::waitid,
        .kill = ::kill,
    };
    return calls;
}

} // namespace stackreel
