#include "system/StandardStreams.h"

#include "system/SystemError.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>

namespace stackreel
{

namespace
{

bool isOpen(int descriptor)
{
    return ::fcntl(descriptor, F_GETFD) != -1;
}

/// Opens /dev/null as `descriptor` if that is closed. `open` uses the lowest free number, so call this
/// function for the descriptors in ascending order.
void openPlaceholder(int descriptor, int flags)
{
    if (!isOpen(descriptor))
        ::open("/dev/null", flags);
}

bool waitUntilWritable(int descriptor)
{
    pollfd entry = {.fd = descriptor, .events = POLLOUT, .revents = 0};
    return ::poll(&entry, 1, -1) == 1 || errno == EINTR;
}

/// Returns 0, or the errno value of the failure.
int writeAll(int descriptor, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t count = ::write(descriptor, text.data(), text.size());
        if (count >= 0)
            text.remove_prefix(static_cast<std::size_t>(count));
        // Another process that shares the stream may have made it non-blocking.
        else if (errno != EINTR && !(errno == EAGAIN && waitUntilWritable(descriptor)))
            return errno;
    }
    return 0;
}

} // namespace

void StandardStreams::prepare()
{
    // The output placeholders are read-only, so that writing fails instead of losing the text.
    openPlaceholder(STDIN_FILENO, O_WRONLY);
    openPlaceholder(STDOUT_FILENO, O_RDONLY);
    openPlaceholder(STDERR_FILENO, O_RDONLY);

    const int emptyInput = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (emptyInput < 0)
        return;
    ::dup2(emptyInput, STDIN_FILENO);
    ::close(emptyInput);
}

void StandardStreams::writeOutput(std::string_view text)
{
    if (const int error = writeAll(STDOUT_FILENO, text); error != 0)
        throw SystemError(error, "write to", "standard output");
}

void StandardStreams::tryToWriteOutput(std::string_view text) noexcept
{
    writeAll(STDOUT_FILENO, text);
}

void StandardStreams::writeError(std::string_view text) noexcept
{
    writeAll(STDERR_FILENO, text);
}

std::optional<std::size_t> StandardStreams::errorTerminalWidth()
{
    winsize size{};
    if (::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0)
        return std::nullopt;
    return size.ws_col;
}

bool StandardStreams::canDrawOnErrorTerminal()
{
    return ::isatty(STDERR_FILENO) == 1 && ::tcgetpgrp(STDERR_FILENO) == ::getpgrp();
}

} // namespace stackreel
