#include "tests/player/StuckFile.h"

#include "tests/support/Awaited.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace stackreel
{

// A named pipe: opening it for reading blocks until it is opened for writing.
StuckFile::StuckFile()
{
    if (::mkfifo(m_path.c_str(), 0600) != 0)
        throw std::system_error(errno, std::generic_category(), "mkfifo");
    m_watchdog = std::jthread([this](const std::stop_token& stop) {
        std::unique_lock lock(m_mutex);
        m_changed.wait_for(lock, stop, ceiling, [] { return false; });
        lock.unlock();
        if (!stop.stop_requested())
            unblock();
    });
}

StuckFile::~StuckFile()
{
    m_watchdog = {};
    unblock();
}

bool StuckFile::unblock()
{
    const std::lock_guard lock(m_mutex);
    if (std::exchange(m_gone, true))
        return false;
    const int writer = ::open(m_path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    std::error_code ignored;
    std::filesystem::remove(m_path, ignored); // a later open of the pipe would block again
    ::close(writer);
    return true;
}

} // namespace stackreel
