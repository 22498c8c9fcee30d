#include "tests/player/StuckFile.h"

#include "tests/support/Awaited.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <fstream>
#include <string>
#include <system_error>
#include <utility>

namespace stackreel
{

namespace
{

/// The text at an address of this process, which may be gone by now.
std::string textAt(std::uintptr_t address, std::size_t length)
{
    std::ifstream memory("/proc/self/mem", std::ios::binary);
    memory.seekg(static_cast<std::streamoff>(address));
    std::string text(length, '\0');
    memory.read(text.data(), static_cast<std::streamsize>(length));
    text.resize(static_cast<std::size_t>(memory.gcount()));
    return text;
}

/// Whether the thread of this folder in `/proc` is in a call that opens the file.
bool isOpening(const std::filesystem::path& thread, const std::string& file)
{
    // The number of the call, and its arguments: a folder, the path, the mode.
    std::ifstream call(thread / "syscall");
    long number = -1;
    std::string folder;
    std::string path;
    return call >> number >> folder >> path && number == SYS_openat &&
           textAt(std::stoull(path, nullptr, 16), file.size()) == file;
}

} // namespace

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

bool StuckFile::isWaitedFor() const
{
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task"))
        if (isOpening(thread.path(), m_path.string()))
            return true;
    return false;
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
