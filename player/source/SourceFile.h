#pragma once

#include "player/base/Nanoseconds.h"

#include <atomic>
#include <filesystem>
#include <memory>
#include <optional>
#include <utility>

namespace stackreel
{

/// A file and its time origin, which has to be the same for all of its readers. Copies share it. For a file
/// that may have changed, make a new object. Any thread.
class SourceFile
{
public:
    SourceFile() = default;
    SourceFile(std::filesystem::path path)
        : m_path(std::move(path)), m_origin(std::make_shared<std::atomic<Nanoseconds>>(unknown))
    {
    }

    const std::filesystem::path& path() const { return m_path; }
    /// The time of the first picture or sound on the container's time line; none until it is known.
    std::optional<Nanoseconds> origin() const
    {
        const Nanoseconds origin = m_origin ? m_origin->load() : unknown;
        return origin == unknown ? std::nullopt : std::optional(origin);
    }
    /// Sets the origin unless it is known already. Returns the one that counts.
    Nanoseconds settleOrigin(Nanoseconds found) const
    {
        Nanoseconds settled = unknown;
        return m_origin && !m_origin->compare_exchange_strong(settled, found) ? settled : found;
    }

private:
    static constexpr Nanoseconds unknown = -1;

    std::filesystem::path m_path;
    std::shared_ptr<std::atomic<Nanoseconds>> m_origin;
};

} // namespace stackreel
