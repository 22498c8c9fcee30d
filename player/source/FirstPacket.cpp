#include "player/source/FirstPacket.h"

#include "player/base/Handover.h"
#include "player/source/SampleTiming.h"

#include <cstdlib>
#include <utility>

namespace stackreel
{

namespace
{

bool areEqual(GstBuffer* one, GstBuffer* other)
{
    GstMapInfo map;
    if (gst_buffer_get_size(one) != gst_buffer_get_size(other) || !gst_buffer_map(one, &map, GST_MAP_READ))
        return false;
    const bool equal = gst_buffer_memcmp(other, 0, map.data, map.size) == 0;
    gst_buffer_unmap(one, &map);
    return equal;
}

} // namespace

void FirstPacket::watch(GstElement* parserOrDecoder)
{
    if (m_watches.exchange(true))
        return;
    const GstPadPtr pad(gst_element_get_static_pad(parserOrDecoder, "sink"));
    const auto probed =
        static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_EVENT_FLUSH);
    gst_pad_add_probe(pad.get(), probed, onPad, this, nullptr);
}

GstPadProbeReturn FirstPacket::onPad(GstPad* pad, GstPadProbeInfo* info, gpointer self)
{
    auto* that = static_cast<FirstPacket*>(self);
    const Handover handover;
    if (info->type & GST_PAD_PROBE_TYPE_BUFFER) {
        GstBuffer* buffer = GST_PAD_PROBE_INFO_BUFFER(info);
        if (!std::exchange(that->m_compared, true))
            that->compare(buffer, bufferTime(buffer, pad));
    } else if (GST_EVENT_TYPE(GST_PAD_PROBE_INFO_EVENT(info)) == GST_EVENT_FLUSH_STOP) {
        that->m_compared = false;
        that->m_wrongTimes = false;
    }
    return GST_PAD_PROBE_OK;
}

void FirstPacket::compare(GstBuffer* buffer, Nanoseconds time)
{
    if (!m_packet) {
        m_packet.reset(gst_buffer_ref(buffer));
        m_time = time;
    } else {
        m_wrongTimes = std::abs(time - m_time) > halfUnit && areEqual(m_packet.get(), buffer);
    }
}

} // namespace stackreel
