#pragma once

#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>

namespace stackreel
{

/// Reads along in a file that somebody else is writing, such as a child's captured standard error. Any
/// thread; nothing throws: a file that cannot be read has no text.
class CapturedText
{
public:
    /// Starts reading a file at its beginning. The file may be removed afterwards.
    void open(const std::filesystem::path& file) noexcept;
    /// What was appended since the last call; of a lot, only the end.
    std::string takeAppended() noexcept;

private:
    std::mutex m_lock; // guards the file, which is opened on another thread than it is read on
    std::ifstream m_file;
};

} // namespace stackreel
