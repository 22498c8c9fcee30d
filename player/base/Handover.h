#pragma once

#include <atomic>

namespace stackreel
{

/// Orders what is done on a thread of ours before GStreamer's threads call us with what they do then, and the
/// other way round. GStreamer does so itself, but by locks which the language's memory model, and a thread
/// sanitizer, know nothing of. To be made before a pipeline starts, after it has stopped, and for as long as
/// each call from one of its threads lasts. Any thread; costs next to nothing.
class Handover
{
public:
    Handover() { pass(); }
    Handover(const Handover&) = delete;
    Handover& operator=(const Handover&) = delete;
    ~Handover() { pass(); }

private:
    static void pass() { passes.fetch_add(1, std::memory_order_acq_rel); }

    // One for all, as that of an object would have to be handed over itself.
    static inline constinit std::atomic<unsigned> passes = 0;
};

} // namespace stackreel
