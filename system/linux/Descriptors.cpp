#include "system/linux/Descriptors.h"

#include "system/SystemCalls.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace stackreel
{

namespace
{

// In a process that was started with a standard stream closed, the next file that is opened gets the
// descriptor of that stream, and a child would inherit it, for example as its standard input. Duplicating the
// descriptor to a higher number avoids that.
int aboveStandardDescriptors(int descriptor)
{
    if (descriptor < 0 || descriptor > STDERR_FILENO)
        return descriptor;
    const int moved = ::fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    const int error = errno;
    systemCalls().close(descriptor);
    errno = error;
    return moved;
}

} // namespace

int openCloseOnExec(int folder, const std::filesystem::path& path, int flags, mode_t mode)
{
    int descriptor = -1;
    do
        descriptor = systemCalls().openat(folder, path.c_str(), flags | O_CLOEXEC, mode);
    while (descriptor < 0 && errno == EINTR);
    return aboveStandardDescriptors(descriptor);
}

} // namespace stackreel
