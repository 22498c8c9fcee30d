#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>

namespace stackreel
{

/// What the updater remembers between runs, in a small file of the user's. A file that is missing, broken or
/// cannot be written is like an empty one. Main thread.
class UpdateStore
{
public:
    using Time = std::chrono::system_clock::time_point;

    explicit UpdateStore(std::filesystem::path file) : m_file(std::move(file)) {}

    /// The file to use: `stackreel/updates.ini` in XDG_STATE_HOME, which is `~/.local/state` where it is not
    /// set to an absolute path.
    static std::filesystem::path standardFile();

    /// When the last check began, to the second.
    std::optional<Time> lastCheck() const;
    void setLastCheck(Time time);
    /// The highest serial of a feed that was accepted, 0 before the first.
    std::int64_t newestSerial() const;
    /// Remembers the serial unless a higher one is known.
    void setNewestSerial(std::int64_t serial);

private:
    std::optional<std::int64_t> number(const char* key) const;
    void setNumber(const char* key, std::int64_t number);

    std::filesystem::path m_file;
};

} // namespace stackreel
