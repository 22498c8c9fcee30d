#include "player/source/TimeOrigin.h"

#include "player/base/Handover.h"
#include "player/source/SampleTiming.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace stackreel
{

namespace
{

constexpr GstClockTime patience = GST_SECOND / 2;

/// Where a buffer begins, or negative when it does not say. What lies before the beginning of the time line
/// is a decoder's warming up, whose sound begins with the line.
Nanoseconds beginningOf(const GstBuffer* buffer, GstPad* pad)
{
    const Nanoseconds time = bufferTime(buffer, pad);
    return GST_BUFFER_PTS_IS_VALID(buffer) ? std::max<Nanoseconds>(time, 0) : time;
}

} // namespace

struct TimeOrigin::State {
    std::mutex mutex;
    SourceFile file;
    std::function<void()> found; ///< none once nobody waits
    int silent = 0;              ///< streams of which nothing came so far
    bool complete = false;       ///< no further stream is to be expected
    bool known = false;
    Nanoseconds earliest = -1;

    /// Something began at a time, or with a negative one will not begin.
    void begin(Nanoseconds time)
    {
        const std::lock_guard lock(mutex);
        --silent;
        consider(time);
        settle();
    }

    void consider(Nanoseconds time)
    {
        if (time >= 0 && !known)
            earliest = earliest < 0 ? time : std::min(earliest, time);
    }

    void settle()
    {
        const bool cannotBeEarlier = earliest >= 0 && earliest <= halfUnit;
        if (!known && (cannotBeEarlier || (complete && silent <= 0)))
            conclude();
    }

    void conclude()
    {
        known = true;
        earliest = earliest < 0 ? file.origin().value_or(0) : file.settleOrigin(earliest);
        if (found)
            std::exchange(found, nullptr)();
    }
};

TimeOrigin::TimeOrigin(SourceFile file, std::function<void()> found) : m_state(std::make_shared<State>())
{
    const std::optional<Nanoseconds> origin = file.origin();
    m_state->known = origin.has_value();
    m_state->earliest = origin.value_or(-1);
    m_state->file = std::move(file);
    m_state->found = std::move(found);
}

TimeOrigin::~TimeOrigin()
{
    if (m_timer) {
        gst_clock_id_unschedule(m_timer);
        gst_clock_id_unref(m_timer);
    }
    const std::lock_guard lock(m_state->mutex);
    m_state->found = nullptr;
}

void TimeOrigin::expect(GstPad* pad)
{
    {
        const std::lock_guard lock(m_state->mutex);
        ++m_state->silent;
    }
    probe(pad, GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM, onPad);
}

void TimeOrigin::heed(GstPad* pad)
{
    probe(pad, GST_PAD_PROBE_TYPE_BUFFER, onDecoder);
}

void TimeOrigin::probe(GstPad* pad, int types, GstPadProbeCallback callback)
{
    gst_pad_add_probe(pad, static_cast<GstPadProbeType>(types), callback, share(), letGo);
}

gpointer TimeOrigin::share() const
{
    auto* const shared = new std::shared_ptr<State>(m_state);
    const Handover handover;
    return shared;
}

void TimeOrigin::letGo(gpointer shared)
{
    const Handover handover;
    delete static_cast<std::shared_ptr<State>*>(shared);
}

void TimeOrigin::expectNoMore()
{
    const std::lock_guard lock(m_state->mutex);
    m_state->complete = true;
    m_state->settle();
}

void TimeOrigin::hurry()
{
    if (m_timer || isKnown())
        return;
    GstClock* clock = gst_system_clock_obtain();
    m_timer = gst_clock_new_single_shot_id(clock, gst_clock_get_time(clock) + patience);
    gst_clock_id_wait_async(m_timer, onImpatience, share(), letGo);
    gst_object_unref(clock);
}

bool TimeOrigin::isKnown() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->known;
}

Nanoseconds TimeOrigin::get() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->known ? std::max<Nanoseconds>(m_state->earliest, 0) : 0;
}

GstPadProbeReturn TimeOrigin::onPad(GstPad* pad, GstPadProbeInfo* info, gpointer state)
{
    const Handover handover;
    Nanoseconds time = -1;
    if (info->type & GST_PAD_PROBE_TYPE_BUFFER) {
        time = beginningOf(GST_PAD_PROBE_INFO_BUFFER(info), pad);
    } else {
        const GstEventType event = GST_EVENT_TYPE(GST_PAD_PROBE_INFO_EVENT(info));
        if (event != GST_EVENT_EOS && event != GST_EVENT_GAP)
            return GST_PAD_PROBE_OK;
    }
    (*static_cast<std::shared_ptr<State>*>(state))->begin(time);
    return GST_PAD_PROBE_REMOVE;
}

GstPadProbeReturn TimeOrigin::onDecoder(GstPad* pad, GstPadProbeInfo* info, gpointer state)
{
    const Handover handover;
    State& waiting = **static_cast<std::shared_ptr<State>*>(state);
    const Nanoseconds time = beginningOf(GST_PAD_PROBE_INFO_BUFFER(info), pad);
    const std::lock_guard lock(waiting.mutex);
    waiting.consider(time);
    waiting.settle();
    return GST_PAD_PROBE_REMOVE;
}

gboolean TimeOrigin::onImpatience(GstClock*, GstClockTime, GstClockID, gpointer state)
{
    const Handover handover;
    State& waiting = **static_cast<std::shared_ptr<State>*>(state);
    const std::lock_guard lock(waiting.mutex);
    if (!waiting.known)
        waiting.conclude();
    return TRUE;
}

} // namespace stackreel
