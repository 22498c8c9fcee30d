#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>

namespace stackreel
{

/// What the updater remembers between runs, in a small file of the user's. A file that is missing or broken
/// is like an empty one; where it cannot be written, the object remembers for as long as it lives. Several
/// programs may share a file. Main thread, which is never made to wait for another program.
class UpdateStore
{
public:
    using Time = std::chrono::system_clock::time_point;

    explicit UpdateStore(std::filesystem::path file) : m_file(std::move(file)) {}

    /// The file to use: `stackreel/updates.ini` in XDG_STATE_HOME, which is `~/.local/state` where it is not
    /// set to an absolute path.
    static std::filesystem::path standardFile();

    /// When the last check was made, to the second.
    std::optional<Time> lastCheck() const { return state().lastCheck; }
    void setLastCheck(Time time);
    /// The highest serial of a feed that was accepted, 0 before the first. It never falls.
    std::int64_t newestSerial() const { return state().newestSerial; }
    /// Remembers the serial unless a higher one is known.
    void setNewestSerial(std::int64_t serial);

private:
    struct State {
        std::optional<Time> lastCheck;
        std::int64_t newestSerial = 0;
    };

    State state() const;
    State storedState() const;
    void remember(const State& state);
    bool write(const State& state) const;

    std::filesystem::path m_file;
    std::optional<Time> m_unwrittenCheck; ///< the last check, where the file does not take it
    std::int64_t m_newestSerial = 0;      ///< of this object's own, should the file be emptied meanwhile
};

} // namespace stackreel
