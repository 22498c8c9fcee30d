#pragma once

#include "tests/support/TemporaryDirectory.h"

#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <thread>

namespace stackreel
{

/// A file that opens and then has whoever reads it wait until it is let go; it turns out empty then, and is
/// gone. Closing a pipeline that reads it takes as long.
class StuckFile
{
public:
    /// Throws `std::system_error` when it cannot be made.
    StuckFile();
    StuckFile(const StuckFile&) = delete;
    StuckFile& operator=(const StuckFile&) = delete;
    ~StuckFile();

    const std::filesystem::path& path() const { return m_path; }
    /// Waits until somebody opened the file; false when nobody does in a minute.
    bool isBeingRead();
    /// False when the file was let go before, as it is by itself a minute after it was opened, so that a test
    /// that waits for it ends.
    bool letGo();

private:
    bool closeWriter();

    TemporaryDirectory m_folder;
    const std::filesystem::path m_path = m_folder / "stuck.mp4";
    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    int m_writer = -1;
    std::jthread m_watchdog;
};

} // namespace stackreel
