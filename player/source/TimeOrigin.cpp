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

constexpr GstClockTime timeout = GST_SECOND / 2;

/// The time of a buffer; negative when it has none. Sound before the time line's zero is the encoder's delay,
/// which a decoder drops, so such a stream begins at zero.
Nanoseconds beginningOf(const GstBuffer* buffer, GstPad* pad)
{
    const Nanoseconds time = bufferTime(buffer, pad);
    return GST_BUFFER_PTS_IS_VALID(buffer) ? std::max<Nanoseconds>(time, 0) : time;
}

} // namespace

struct TimeOrigin::State {
    std::mutex mutex;
    SourceFile file;
    std::function<void()> found; ///< none once it was called or nobody waits
    int awaited = 0;             ///< streams without data so far
    bool complete = false;       ///< no further stream follows
    bool known = false;
    Nanoseconds earliest = -1;

    /// A stream begins at a time; a negative one means that it stays empty.
    void begin(Nanoseconds time)
    {
        const std::lock_guard lock(mutex);
        --awaited;
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
        if (!known && (cannotBeEarlier || (complete && awaited <= 0)))
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
        ++m_state->awaited;
    }
    probe(pad, GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM, onPad);
}

void TimeOrigin::watchDecoder(GstPad* pad)
{
    probe(pad, GST_PAD_PROBE_TYPE_BUFFER, onDecoder);
}

void TimeOrigin::probe(GstPad* pad, int types, GstPadProbeCallback callback)
{
    gst_pad_add_probe(pad, static_cast<GstPadProbeType>(types), callback, share(), release);
}

gpointer TimeOrigin::share() const
{
    auto* const shared = new std::shared_ptr<State>(m_state);
    const Handover handover;
    return shared;
}

void TimeOrigin::release(gpointer shared)
{
    const Handover handover;
    delete static_cast<std::shared_ptr<State>*>(shared);
}

void TimeOrigin::noMoreStreams()
{
    const std::lock_guard lock(m_state->mutex);
    m_state->complete = true;
    m_state->settle();
}

void TimeOrigin::startTimeout()
{
    if (m_timer || isKnown())
        return;
    GstClock* clock = gst_system_clock_obtain();
    m_timer = gst_clock_new_single_shot_id(clock, gst_clock_get_time(clock) + timeout);
    gst_clock_id_wait_async(m_timer, onTimeout, share(), release);
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

gboolean TimeOrigin::onTimeout(GstClock*, GstClockTime, GstClockID, gpointer state)
{
    const Handover handover;
    State& waiting = **static_cast<std::shared_ptr<State>*>(state);
    const std::lock_guard lock(waiting.mutex);
    if (!waiting.known)
        waiting.conclude();
    return TRUE;
}

} // namespace stackreel
