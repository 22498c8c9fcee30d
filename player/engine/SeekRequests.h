#pragma once

#include "player/base/Clock.h"
#include "player/engine/PlayerRequest.h"

#include <optional>

namespace stackreel
{

/// The seek in flight and the pending one. While requests keep coming, the seek in flight is completed:
/// otherwise no frame would ever be shown. A pending seek that was not replaced for a while is where the user
/// stopped, and supersedes the seek in flight. A plain value.
class SeekRequests
{
public:
    using Seek = PlayerRequest::Seek;

    /// Replaces the pending seek.
    void request(Seek seek, Clock::Instant now);
    /// The seek to begin now, if any; it is in flight from then on.
    std::optional<Seek> begin(Clock::Instant now);
    /// The seek in flight showed its frame. Returns its number.
    std::uint64_t complete();
    /// Drops both.
    void clear() { *this = {}; }
    /// Drops the seek in flight and keeps the pending one.
    void dropInFlight() { m_inFlight.reset(); }

    bool isPending() const { return m_pending.has_value(); }
    bool isInFlight() const { return m_inFlight.has_value(); }
    bool isIdle() const { return !m_pending && !m_inFlight; }
    /// When `begin` returns a seek; in the past when it does so now; none without a pending seek, or when it
    /// has to wait for `complete`.
    std::optional<Clock::Instant> deadline() const;

private:
    std::optional<Seek> m_pending;
    std::optional<Seek> m_inFlight;
    bool m_superseded = false; ///< the seek in flight replaced another that had shown no frame
    Clock::Instant m_pendingSince = {};
};

} // namespace stackreel
