#pragma once

#include "tests/support/TemporaryDirectory.h"

#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <thread>

namespace stackreel
{

/// A file whose opening blocks until `unblock`. It is then empty, and removed.
class StuckFile
{
public:
    /// Throws `std::system_error` when it cannot be made.
    StuckFile();
    StuckFile(const StuckFile&) = delete;
    StuckFile& operator=(const StuckFile&) = delete;
    ~StuckFile();

    const std::filesystem::path& path() const { return m_path; }
    /// Whether a thread of this process is blocked in opening the file.
    bool isWaitedFor() const;
    /// False when the file was unblocked before. It unblocks itself after a minute, so that a blocked test
    /// ends.
    bool unblock();

private:
    TemporaryDirectory m_folder;
    const std::filesystem::path m_path = m_folder / "stuck.mp4";
    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    bool m_gone = false;
    std::jthread m_watchdog;
};

} // namespace stackreel
