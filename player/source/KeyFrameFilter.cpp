#include "player/source/KeyFrameFilter.h"

#include "player/base/Handover.h"
#include "player/source/SampleTiming.h"

namespace stackreel
{

void KeyFrameFilter::watch(GstElement* decoder)
{
    const GstPadPtr pad(gst_element_get_static_pad(decoder, "sink"));
    const auto probed =
        static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_EVENT_FLUSH);
    gst_pad_add_probe(pad.get(), probed, onPad, this, nullptr);
}

GstPadProbeReturn KeyFrameFilter::onPad(GstPad* pad, GstPadProbeInfo* info, gpointer self)
{
    auto* that = static_cast<KeyFrameFilter*>(self);
    const Handover handover;
    if (info->type & GST_PAD_PROBE_TYPE_BUFFER)
        return that->pass(pad, GST_PAD_PROBE_INFO_BUFFER(info));
    if (GST_EVENT_TYPE(GST_PAD_PROBE_INFO_EVENT(info)) == GST_EVENT_FLUSH_STOP)
        that->m_passed = false;
    return GST_PAD_PROBE_OK;
}

GstPadProbeReturn KeyFrameFilter::pass(GstPad* pad, GstBuffer* buffer)
{
    const Nanoseconds wanted = m_wanted;
    if (wanted == everything)
        return GST_PAD_PROBE_OK;
    if (m_passed) {
        // After this event the pad itself refuses what comes from upstream.
        gst_pad_send_event(pad, gst_event_new_eos());
        return GST_PAD_PROBE_DROP;
    }
    if (GST_BUFFER_FLAG_IS_SET(buffer, GST_BUFFER_FLAG_DELTA_UNIT))
        return GST_PAD_PROBE_DROP;
    m_passed = bufferTime(buffer, pad) >= wanted - halfUnit;
    return GST_PAD_PROBE_OK;
}

} // namespace stackreel
