#include "player/source/OrientationTag.h"

#include "player/base/Handover.h"

namespace stackreel
{

void OrientationTag::watch(GstPad* pad)
{
    gst_pad_add_probe(pad, GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM, onEvent, this, nullptr);
}

GstPadProbeReturn OrientationTag::onEvent(GstPad*, GstPadProbeInfo* info, gpointer self)
{
    auto* that = static_cast<OrientationTag*>(self);
    const Handover handover;
    GstEvent* event = GST_PAD_PROBE_INFO_EVENT(info);
    if (GST_EVENT_TYPE(event) != GST_EVENT_TAG)
        return GST_PAD_PROBE_OK;
    GstTagList* tags = nullptr;
    gst_event_parse_tag(event, &tags);
    const gchar* text = nullptr;
    if (gst_tag_list_peek_string_index(tags, GST_TAG_IMAGE_ORIENTATION, 0, &text)) {
        const Orientation orientation = orientationFromTag(text);
        that->m_quarterTurns = orientation.quarterTurns;
        that->m_mirrored = orientation.mirrored;
    }
    return GST_PAD_PROBE_OK;
}

} // namespace stackreel
