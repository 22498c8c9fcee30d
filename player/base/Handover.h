#pragma once

#include <atomic>

namespace stackreel
{

/// Makes writes on this program's threads visible to callbacks on GStreamer's threads, and the other way
/// round. GStreamer ensures that by its own locks, which a thread sanitizer does not see. Create one before a
/// pipeline starts, after it has stopped, and for the length of each callback; also where memory is returned
/// to a buffer pool and taken from it. Any thread; costs next to nothing.
class Handover
{
public:
    Handover() { pass(); }
    Handover(const Handover&) = delete;
    Handover& operator=(const Handover&) = delete;
    ~Handover() { pass(); }

private:
    static void pass() { passes.fetch_add(1, std::memory_order_acq_rel); }

    // One for all objects: a member would have to be handed over itself.
    static inline constinit std::atomic<unsigned> passes = 0;
};

} // namespace stackreel
