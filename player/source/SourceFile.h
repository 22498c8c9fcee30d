#pragma once

#include "player/base/Nanoseconds.h"

#include <atomic>
#include <filesystem>
#include <memory>
#include <optional>
#include <utility>

namespace stackreel
{

/// A file with what is to be the same for all who read it: where its time line begins. Copies share that; a
/// file that may have changed since is a new one. Any thread.
class SourceFile
{
public:
    SourceFile() = default;
    SourceFile(std::filesystem::path path)
        : m_path(std::move(path)), m_origin(std::make_shared<std::atomic<Nanoseconds>>(unknown))
    {
    }

    const std::filesystem::path& path() const { return m_path; }
    /// Where the first picture or sound lies on the container's time line; none until somebody found out.
    std::optional<Nanoseconds> origin() const
    {
        const Nanoseconds origin = m_origin ? m_origin->load() : unknown;
        return origin == unknown ? std::nullopt : std::optional(origin);
    }
    /// What counts as the origin from now on: `found`, unless somebody else was faster.
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
