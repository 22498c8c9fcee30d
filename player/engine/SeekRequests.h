#pragma once

#include "player/base/Clock.h"
#include "player/engine/PlayerOrders.h"

#include <optional>

namespace stackreel
{

/// The seek under way and the one that is to follow it. While requests keep coming the one under way is
/// finished, or nothing would ever be seen; a request that was not replaced by another for a while is where
/// the user stopped, and takes the place of the one under way. A plain value.
class SeekRequests
{
public:
    using Seek = PlayerOrders::Seek;

    /// Takes the place of whatever waited.
    void want(Seek seek, Clock::Instant now);
    /// The seek to begin now, if any; it is under way from then on.
    std::optional<Seek> begin(Clock::Instant now);
    /// The seek under way showed its frame; gives its number.
    std::uint64_t land();
    /// Nothing is under way any more, and nothing waits.
    void clear() { *this = {}; }
    /// Nothing is under way any more, but what waits still does.
    void abandon() { m_flying.reset(); }

    bool isWaiting() const { return m_wanted.has_value(); }
    bool isFlying() const { return m_flying.has_value(); }
    bool isIdle() const { return !m_wanted && !m_flying; }
    /// When `begin` gives a seek, in the past when it does so now; none when only `land` can change that.
    std::optional<Clock::Instant> deadline() const;

private:
    std::optional<Seek> m_wanted;
    std::optional<Seek> m_flying;
    bool m_superseded = false; ///< the one under way took another's place before that showed a frame
    Clock::Instant m_wantedSince = {};
};

} // namespace stackreel
