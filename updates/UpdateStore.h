#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>

namespace stackreel
{

/// The updater's state between runs, in a small file of the user. A missing or broken file counts as empty.
/// If the file cannot be written, the object keeps the state in memory. Several processes may share the file:
/// a lock file beside it (`updates.ini.lock`) keeps their writes apart. A write waits for that of another
/// process for at most a second; then the object keeps the state in memory until its next write. Main thread.
class UpdateStore
{
public:
    using Time = std::chrono::system_clock::time_point;

    explicit UpdateStore(std::filesystem::path file) : m_file(std::move(file)) {}

    /// The file to use: `updates.ini` in the program's state folder.
    static std::filesystem::path standardFile();

    /// The time of the last check, in whole seconds.
    std::optional<Time> lastCheck() const { return state().lastCheck; }
    void setLastCheck(Time time);
    /// The highest serial of an accepted feed, 0 before the first. It never decreases.
    std::int64_t newestSerial() const { return state().newestSerial; }
    /// Stores the serial if it is higher than the stored one.
    void setNewestSerial(std::int64_t serial);

private:
    struct State {
        std::optional<Time> lastCheck;
        std::int64_t newestSerial = 0;
    };

    State state() const;
    State storedState() const;
    void save();
    bool write(const State& state) const;

    std::filesystem::path m_file;
    std::optional<Time> m_unsavedCheck; ///< the last check, if it could not be written to the file
    std::int64_t m_newestSerial = 0;    ///< the highest that this object saw, in case the file is emptied
};

} // namespace stackreel
