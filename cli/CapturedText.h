#pragma once

#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>

namespace stackreel
{

/// Reads a file while another process writes it, such as a child's captured standard error. Any thread. No
/// function throws; a file that cannot be read counts as empty.
class CapturedText
{
public:
    /// Starts reading a file at its beginning. The file may be removed afterwards.
    void open(const std::filesystem::path& file) noexcept;
    /// The text appended since the last call; only its last 64 KiB when there is more.
    std::string readAppended() noexcept;

private:
    std::mutex m_lock; // guards the file, which one thread opens and another reads
    std::ifstream m_file;
};

} // namespace stackreel
