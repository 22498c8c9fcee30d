#include "player/source/StreamSelector.h"

#include "player/base/Handover.h"
#include "player/source/Downmix.h"

#include <string_view>

namespace stackreel
{

namespace
{

/// The caps of a pad now or later; none when they are not known.
GstCapsPtr capsOf(GstPad* pad)
{
    GstCapsPtr caps(gst_pad_get_current_caps(pad));
    if (!caps)
        caps.reset(gst_pad_query_caps(pad, nullptr));
    if (caps && (gst_caps_is_empty(caps.get()) || gst_caps_is_any(caps.get())))
        caps.reset();
    return caps;
}

std::string_view mediaTypeOf(const GstCaps* caps)
{
    return gst_structure_get_name(gst_caps_get_structure(caps, 0));
}

} // namespace

void StreamSelector::watch(GstElement* decoder, GstElement* target)
{
    m_target = target;
    g_signal_connect(decoder, "autoplug-select", G_CALLBACK(onAutoplugSelect), this);
    g_signal_connect(decoder, "pad-added", G_CALLBACK(onPadAdded), this);
    g_signal_connect(decoder, "no-more-pads", G_CALLBACK(onNoMorePads), this);
}

int StreamSelector::onAutoplugSelect(GstElement*, GstPad*, GstCaps* caps, GstElementFactory* factory,
                                     gpointer self)
{
    constexpr int tryIt = 0;
    constexpr int exposeAsItIs = 1;
    const auto* that = static_cast<StreamSelector*>(self);
    const Handover handover;
    return that->isNeeded(factory, mediaTypeOf(caps)) ? tryIt : exposeAsItIs;
}

/// Whether the decoder may use an element for a media type.
bool StreamSelector::isNeeded(GstElementFactory* factory, std::string_view mediaType) const
{
    // Some containers have media types such as video/mpeg, so the element's own type decides.
    if (gst_element_factory_list_is_type(factory, GST_ELEMENT_FACTORY_TYPE_DEMUXER))
        return true;
    const bool decodes = gst_element_factory_list_is_type(factory, GST_ELEMENT_FACTORY_TYPE_DECODER);
    if (isOfKind(mediaType))
        return m_wanted.decoded || !decodes;
    return !decodes && !gst_element_factory_list_is_type(factory, GST_ELEMENT_FACTORY_TYPE_PARSER);
}

/// Some video streams have the media type of still pictures, such as image/jpeg.
bool StreamSelector::isOfKind(std::string_view mediaType) const
{
    if (m_wanted.kind == WantedStream::Kind::sound)
        return mediaType.starts_with("audio/");
    return mediaType.starts_with("video/") || mediaType.starts_with("image/");
}

bool StreamSelector::isWanted(std::string_view mediaType) const
{
    return isOfKind(mediaType) && mediaType.ends_with("/x-raw") == m_wanted.decoded;
}

void StreamSelector::onPadAdded(GstElement*, GstPad* pad, gpointer self)
{
    auto* that = static_cast<StreamSelector*>(self);
    const Handover handover;
    const GstCapsPtr caps = capsOf(pad);
    if (!caps)
        return;
    const std::string_view type = mediaTypeOf(caps.get());
    if (type.starts_with("video/") || type.starts_with("audio/"))
        that->m_origin.expect(pad);
    if (!that->m_linked && that->isWanted(type))
        that->link(pad, caps.get());
}

void StreamSelector::link(GstPad* pad, const GstCaps* caps)
{
    const GstPadPtr entry(gst_element_get_static_pad(m_target, "sink"));
    mixUnplacedChannels(m_target, caps);
    m_linked = gst_pad_link(pad, entry.get()) == GST_PAD_LINK_OK;
}

/// A file without the wanted stream may be read to its end without an error.
void StreamSelector::onNoMorePads(GstElement*, gpointer self)
{
    auto* that = static_cast<StreamSelector*>(self);
    const Handover handover;
    that->m_origin.noMoreStreams();
    if (!that->m_linked)
        that->m_missing();
}

} // namespace stackreel
