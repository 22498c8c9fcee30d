#include "player/source/DecodePipeline.h"

#include "player/base/Handover.h"
#include "player/source/SampleTiming.h"

#include <gst/video/video.h>

#include <algorithm>
#include <thread>

namespace stackreel
{

namespace
{

constexpr const char* soundCaps = "audio/x-raw,format=S16LE,layout=interleaved,rate=48000,channels=2";

struct ContentKind {
    const char* decoder;
    WantedStream stream;
    const char* delivered; ///< caps of the samples
    guint limit;           ///< samples
    guint initialLimit;    ///< samples ahead until it is known where the file begins
};

ContentKind kindOf(DecodePipeline::Content content)
{
    using Kind = WantedStream::Kind;
    switch (content) {
    case DecodePipeline::Content::packets:
        return {"decodebin", {Kind::pictures, false}, nullptr, 2, 64};
    case DecodePipeline::Content::sound:
        return {"decodebin", {Kind::sound, true}, soundCaps, 96, 8}; // of AAC two seconds, for slow disks
    default:
        return {"decodebin", {Kind::pictures, true}, "video/x-raw", 2, 2};
    }
}

/// Each thread of a decoder holds a few whole pictures, so many cores must not mean that much memory.
void limitThreads(GstElement* element)
{
    const guint cores = std::max(1U, std::thread::hardware_concurrency());
    for (const char* name : {"max-threads", "n-threads"}) {
        GParamSpec* property = g_object_class_find_property(G_OBJECT_GET_CLASS(element), name);
        if (property && G_IS_PARAM_SPEC_INT(property))
            g_object_set(element, name, static_cast<gint>(std::min(cores, 4U)), nullptr);
    }
}

std::string errorText(GstMessage* message)
{
    GError* error = nullptr;
    gst_message_parse_error(message, &error, nullptr);
    std::string text = error->message;
    g_error_free(error);
    return text;
}

bool isVideoParser(GstElementFactory* factory)
{
    constexpr auto type = GST_ELEMENT_FACTORY_TYPE_PARSER | GST_ELEMENT_FACTORY_TYPE_MEDIA_VIDEO;
    return factory && gst_element_factory_list_is_type(factory, type);
}

} // namespace

DecodePipeline::DecodePipeline(const SourceFile& file, Content content, std::function<void()> wake)
    : m_wake(std::move(wake)),
      m_origin(file, [this] { useOrigin(); }),
      m_selector(kindOf(content).stream, m_origin, [this] { fail("The file has no such stream."); })
{
    ensureGStreamer();
    m_pipeline.reset(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new(nullptr))));
    build(file.path(), content);
    watch();
    const Handover handover;
    if (gst_element_set_state(m_pipeline.get(), GST_STATE_PLAYING) == GST_STATE_CHANGE_FAILURE)
        fail("The file cannot be opened.");
    limitQueue();
}

DecodePipeline::~DecodePipeline()
{
    // Whatever waits for room in the sink's queue, perhaps with a lock that the change of state needs, goes.
    gst_pad_send_event(m_sinkPad.get(), gst_event_new_flush_start());
    // The decoder by itself first: while it links a new stream to the sink, GStreamer 1.22 may leave it out
    // when it stops the pipeline ("loop detected in the graph"), and its threads would outlive this object.
    gst_element_set_locked_state(m_decoder, TRUE);
    gst_element_set_state(m_decoder, GST_STATE_NULL);
    gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
    const Handover handover;
}

void DecodePipeline::build(const std::filesystem::path& path, Content content)
{
    const ContentKind kind = kindOf(content);
    m_initialLimit = kind.initialLimit;
    m_limit = kind.limit;
    GstElement* source = addElement(m_pipeline.get(), "filesrc");
    m_decoder = addElement(m_pipeline.get(), kind.decoder);
    m_sink = addElement(m_pipeline.get(), "appsink");
    GstElement* target = m_sink;
    if (content == Content::sound) {
        target = addElement(m_pipeline.get(), "audioconvert");
        GstElement* resampler = addElement(m_pipeline.get(), "audioresample");
        gst_element_link_many(target, resampler, m_sink, nullptr);
    }
    g_object_set(source, "location", path.c_str(), nullptr);
    const GstCapsPtr delivered(kind.delivered ? gst_caps_from_string(kind.delivered) : gst_caps_new_any());
    g_object_set(m_sink, "caps", delivered.get(), "sync", FALSE, "async", FALSE, "qos", FALSE, "max-buffers",
                 0, "enable-last-sample", FALSE, "wait-on-eos", FALSE, nullptr);
    gst_element_link(source, m_decoder);
    m_selector.watch(m_decoder, target);
}

void DecodePipeline::watch()
{
    g_signal_connect(m_pipeline.get(), "deep-element-added", G_CALLBACK(onElementAdded), this);
    GstAppSinkCallbacks callbacks = {};
    callbacks.new_sample = onSample;
    callbacks.eos = onEnd;
    gst_app_sink_set_callbacks(sink(), &callbacks, this, nullptr);
    m_sinkPad.reset(gst_element_get_static_pad(m_sink, "sink"));
    gst_pad_add_probe(m_sinkPad.get(), GST_PAD_PROBE_TYPE_QUERY_DOWNSTREAM, onQuery, nullptr, nullptr);
    m_orientation.watch(m_sinkPad.get());
    m_colours.addTo(m_sinkPad.get());
    const GstBusPtr bus(gst_element_get_bus(m_pipeline.get()));
    gst_bus_set_sync_handler(bus.get(), onMessage, this, nullptr);
}

/// Not before the pipeline runs: a full queue would hold a lock that its change of state needs, while nobody
/// takes anything yet.
void DecodePipeline::limitQueue()
{
    m_running = true;
    gst_app_sink_set_max_buffers(sink(), m_initialLimit);
    if (m_origin.isKnown())
        gst_app_sink_set_max_buffers(sink(), m_limit);
}

void DecodePipeline::useOrigin()
{
    if (m_running)
        gst_app_sink_set_max_buffers(sink(), m_limit);
    m_wake();
}

GstSamplePtr DecodePipeline::tryPull()
{
    return m_origin.isKnown() ? GstSamplePtr(gst_app_sink_try_pull_sample(sink(), 0)) : nullptr;
}

Nanoseconds DecodePipeline::timeOf(GstSample* sample) const
{
    const Nanoseconds time = sampleTime(sample);
    return time < 0 ? time : std::max<Nanoseconds>(time - m_origin.get(), 0);
}

bool DecodePipeline::atEnd() const
{
    return gst_app_sink_is_eos(sink());
}

bool DecodePipeline::seekToKeyFrame(Nanoseconds time, GstSeekFlags snap)
{
    m_keyFrameFilter.passAll();
    return seek(time, static_cast<GstSeekFlags>(GST_SEEK_FLAG_KEY_UNIT | snap));
}

bool DecodePipeline::seekToOneKeyFrame(Nanoseconds time, Nanoseconds wanted)
{
    m_keyFrameFilter.passOnly(wanted + m_origin.get());
    return seek(time, static_cast<GstSeekFlags>(GST_SEEK_FLAG_KEY_UNIT | GST_SEEK_FLAG_SNAP_BEFORE));
}

bool DecodePipeline::seekToSample(Nanoseconds time)
{
    return seek(time, GST_SEEK_FLAG_ACCURATE);
}

bool DecodePipeline::seek(Nanoseconds time, GstSeekFlags flags)
{
    // By way of the pad: the sink's own state may be locked by a change that waits for room in its queue,
    // which only this seek would make.
    return gst_pad_push_event(
        m_sinkPad.get(),
        gst_event_new_seek(1.0, GST_FORMAT_TIME, static_cast<GstSeekFlags>(GST_SEEK_FLAG_FLUSH | flags),
                           GST_SEEK_TYPE_SET, m_origin.get() + std::max<Nanoseconds>(time, 0),
                           GST_SEEK_TYPE_NONE, 0));
}

Nanoseconds DecodePipeline::claimedDuration() const
{
    gint64 duration = 0;
    if (!gst_element_query_duration(m_sink, GST_FORMAT_TIME, &duration))
        return 0;
    return std::max<gint64>(duration - m_origin.get(), 0);
}

bool DecodePipeline::hasIdleDemuxer() const
{
    if (!isOpening())
        return false;
    const std::lock_guard lock(m_mutex);
    GstPad* pad = m_demuxerPad.get();
    return pad && GST_PAD_MODE(pad) == GST_PAD_MODE_PULL && gst_pad_get_task_state(pad) != GST_TASK_STARTED;
}

void DecodePipeline::fail(const std::string& reason)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_reason.empty())
            m_reason = reason;
    }
    m_failed = true;
    m_wake();
}

std::string DecodePipeline::failureReason() const
{
    const std::lock_guard lock(m_mutex);
    return m_reason;
}

void DecodePipeline::onElementAdded(GstBin*, GstBin*, GstElement* element, gpointer self)
{
    auto* that = static_cast<DecodePipeline*>(self);
    const Handover handover;
    GstElementFactory* factory = gst_element_get_factory(element);
    GstPadPtr entry(gst_element_get_static_pad(element, "sink"));
    if (entry && factory && gst_element_factory_list_is_type(factory, GST_ELEMENT_FACTORY_TYPE_DECODER))
        that->m_origin.watchDecoder(entry.get());
    if (entry && factory && gst_element_factory_list_is_type(factory, GST_ELEMENT_FACTORY_TYPE_DEMUXER)) {
        const std::lock_guard lock(that->m_mutex);
        that->m_demuxerPad = std::move(entry);
    }
    if (isVideoParser(factory)) {
        that->m_firstPacket.watch(element);
        that->m_colours.removeBefore(element);
    }
    if (!GST_IS_VIDEO_DECODER(element))
        return;
    limitThreads(element);
    that->m_firstPacket.watch(element);
    that->m_keyFrameFilter.watch(element);
}

GstBusSyncReply DecodePipeline::onMessage(GstBus*, GstMessage* message, gpointer self)
{
    auto* that = static_cast<DecodePipeline*>(self);
    const Handover handover;
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR)
        that->fail(errorText(message));
    // With a sync handler the reference is ours to drop, and nobody reads the bus.
    gst_message_unref(message);
    return GST_BUS_DROP;
}

/// Lets decoders hand over pictures in the memory they decode into, with rows of any length.
GstPadProbeReturn DecodePipeline::onQuery(GstPad*, GstPadProbeInfo* info, gpointer)
{
    GstQuery* query = GST_PAD_PROBE_INFO_QUERY(info);
    if (GST_QUERY_TYPE(query) != GST_QUERY_ALLOCATION)
        return GST_PAD_PROBE_OK;
    const Handover handover;
    gst_query_add_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr);
    return GST_PAD_PROBE_HANDLED;
}

GstFlowReturn DecodePipeline::onSample(GstAppSink*, gpointer self)
{
    auto* that = static_cast<DecodePipeline*>(self);
    const Handover handover;
    that->m_started = true;
    that->m_origin.startTimeout();
    that->m_wake();
    return GST_FLOW_OK;
}

void DecodePipeline::onEnd(GstAppSink*, gpointer self)
{
    auto* that = static_cast<DecodePipeline*>(self);
    const Handover handover;
    that->m_wake();
}

} // namespace stackreel
