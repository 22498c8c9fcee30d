#include "player/source/ContainerColours.h"

#include "player/base/GStreamer.h"
#include "player/base/Handover.h"

#include <memory>

namespace stackreel
{

namespace
{

constexpr const char* field = "colorimetry";

/// The caps in a caps event; none in other events.
const GstCaps* capsIn(GstEvent* event)
{
    GstCaps* caps = nullptr;
    if (GST_EVENT_TYPE(event) == GST_EVENT_CAPS)
        gst_event_parse_caps(event, &caps);
    return caps;
}

/// The colours in caps; everything is unknown if there are none.
GstVideoColorimetry coloursIn(const GstCaps* caps)
{
    GstVideoColorimetry colours = {};
    const gchar* text = gst_structure_get_string(gst_caps_get_structure(caps, 0), field);
    return text && gst_video_colorimetry_from_string(&colours, text) ? colours : GstVideoColorimetry{};
}

bool isUnknown(const GstVideoColorimetry& colours)
{
    const GstVideoColorimetry unknown = {};
    return gst_video_colorimetry_is_equal(&colours, &unknown);
}

/// Replaces the event of a probe by one with other colours.
void replaceColours(GstPadProbeInfo* info, const GstCaps* caps, const GstVideoColorimetry& colours)
{
    const GstCapsPtr changed(gst_caps_copy(caps));
    GstStructure* structure = gst_caps_get_structure(changed.get(), 0);
    const std::unique_ptr<gchar, void (*)(gpointer)> text(gst_video_colorimetry_to_string(&colours), g_free);
    if (isUnknown(colours))
        gst_structure_remove_field(structure, field);
    else
        gst_structure_set(structure, field, G_TYPE_STRING, text.get(), nullptr);
    GstEvent* event = GST_PAD_PROBE_INFO_EVENT(info);
    GstEvent* replacement = gst_event_new_caps(changed.get());
    gst_event_set_seqnum(replacement, gst_event_get_seqnum(event));
    gst_event_unref(event);
    GST_PAD_PROBE_INFO_DATA(info) = replacement;
}

} // namespace

void ContainerColours::removeBefore(GstElement* parser)
{
    const GstPadPtr pad(gst_element_get_static_pad(parser, "sink"));
    gst_pad_add_probe(pad.get(), GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM, onParser, this, nullptr);
}

void ContainerColours::addTo(GstPad* pad)
{
    gst_pad_add_probe(pad, GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM, onPictures, this, nullptr);
}

GstPadProbeReturn ContainerColours::onParser(GstPad*, GstPadProbeInfo* info, gpointer self)
{
    auto* that = static_cast<ContainerColours*>(self);
    const Handover handover;
    const GstCaps* caps = capsIn(GST_PAD_PROBE_INFO_EVENT(info));
    if (!caps)
        return GST_PAD_PROBE_OK;
    const GstStructure* structure = gst_caps_get_structure(caps, 0);
    // The streams of other codecs say less about their colours than containers do.
    const bool saysAll = gst_structure_has_name(structure, "video/x-h264") ||
                         gst_structure_has_name(structure, "video/x-h265");
    const GstVideoColorimetry colours = coloursIn(caps);
    if (!saysAll || isUnknown(colours))
        return GST_PAD_PROBE_OK;
    {
        const std::lock_guard lock(that->m_mutex);
        that->m_container = colours;
    }
    replaceColours(info, caps, {});
    return GST_PAD_PROBE_OK;
}

GstPadProbeReturn ContainerColours::onPictures(GstPad*, GstPadProbeInfo* info, gpointer self)
{
    auto* that = static_cast<ContainerColours*>(self);
    const Handover handover;
    const GstCaps* caps = capsIn(GST_PAD_PROBE_INFO_EVENT(info));
    if (!caps || !gst_structure_has_name(gst_caps_get_structure(caps, 0), "video/x-raw"))
        return GST_PAD_PROBE_OK;
    const GstVideoColorimetry stated = coloursIn(caps);
    const GstVideoColorimetry complete = that->completed(stated);
    if (!gst_video_colorimetry_is_equal(&stated, &complete))
        replaceColours(info, caps, complete);
    return GST_PAD_PROBE_OK;
}

GstVideoColorimetry ContainerColours::completed(GstVideoColorimetry colours)
{
    const std::lock_guard lock(m_mutex);
    if (colours.range == GST_VIDEO_COLOR_RANGE_UNKNOWN)
        colours.range = m_container.range;
    if (colours.matrix == GST_VIDEO_COLOR_MATRIX_UNKNOWN)
        colours.matrix = m_container.matrix;
    if (colours.transfer == GST_VIDEO_TRANSFER_UNKNOWN)
        colours.transfer = m_container.transfer;
    if (colours.primaries == GST_VIDEO_COLOR_PRIMARIES_UNKNOWN)
        colours.primaries = m_container.primaries;
    return colours;
}

} // namespace stackreel
