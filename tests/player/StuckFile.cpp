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

// A named pipe that has a writer who writes nothing.
StuckFile::StuckFile()
{
    if (::mkfifo(m_path.c_str(), 0600) != 0)
        throw std::system_error(errno, std::generic_category(), "mkfifo");
}

StuckFile::~StuckFile()
{
    letGo();
}

bool StuckFile::isBeingRead()
{
    // Without a reader there cannot be a writer that does not wait.
    const bool opened = eventually([this] {
        m_writer = ::open(m_path.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        return m_writer >= 0;
    });
    if (opened)
        m_watchdog = std::jthread([this](const std::stop_token& stop) {
            std::unique_lock lock(m_mutex);
            m_changed.wait_for(lock, stop, ceiling, [] { return false; });
            lock.unlock();
            closeWriter();
        });
    return opened;
}

bool StuckFile::letGo()
{
    const bool stuck = closeWriter();
    m_watchdog = {};
    return stuck;
}

bool StuckFile::closeWriter()
{
    const std::lock_guard lock(m_mutex);
    std::error_code gone;
    std::filesystem::remove(m_path, gone); // or whoever opens it again would wait for another writer
    const int writer = std::exchange(m_writer, -1);
    return writer >= 0 && ::close(writer) == 0;
}

} // namespace stackreel
