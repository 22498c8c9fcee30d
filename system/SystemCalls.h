#pragma once

#include <spawn.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/wait.h>

namespace stackreel
{

/// The system calls of this program that can fail for external reasons: a full disk, no descriptors left, a
/// child that cannot be started. All code that runs a child calls them through this table, so tests can make
/// each fail.
///
/// The functions have the signatures and the errno convention of the calls they are named after. Only tests
/// replace entries, before they start the threads that use the table. The program never changes it.
struct SystemCalls {
    int (*openat)(int folder, const char* path, int flags, mode_t mode);
    int (*close)(int descriptor);
    int (*fstatat)(int folder, const char* path, struct stat* found, int flags);
    int (*fsync)(int descriptor);
    int (*fallocate)(int descriptor, int mode, off_t offset, off_t length);
    ssize_t (*read)(int descriptor, void* buffer, size_t size);
    int (*mkdir)(const char* path, mode_t mode);
    int (*posixSpawn)(pid_t* pid, const char* path, const posix_spawn_file_actions_t* actions,
                      const posix_spawnattr_t* attributes, char* const arguments[],
                      char* const environment[]);
    int (*waitid)(idtype_t type, id_t id, siginfo_t* info, int options);
    int (*kill)(pid_t pid, int signal);
};

/// The table in use. It contains the host system's own calls, except for entries that a test has replaced.
SystemCalls& systemCalls();

} // namespace stackreel
