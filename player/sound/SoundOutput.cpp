#include "player/sound/SoundOutput.h"

#include "player/base/Handover.h"

#include <gst/app/gstappsrc.h>

#include <stdexcept>

namespace stackreel
{

namespace
{

constexpr const char* format = "audio/x-raw,format=S16LE,layout=interleaved,rate=48000,channels=2";
/// A second of sound. When a device stalls, older sound is dropped.
constexpr guint64 mostWaitingBytes = guint64{SoundPiece::rate} * SoundPiece::channels * sizeof(std::int16_t);

GstClockTime clockTime(Clock::Instant instant)
{
    return static_cast<GstClockTime>(
        std::chrono::duration_cast<std::chrono::nanoseconds>(instant.time_since_epoch()).count());
}

} // namespace

// Exclude OpenAL: without a device it writes to standard error through ALSA's library, and with one the other
// sinks find the device, too.
GstElementPtr makeSystemSoundSink()
{
    if (GstPluginFeature* openAl = gst_registry_lookup_feature(gst_registry_get(), "openalsink")) {
        gst_plugin_feature_set_rank(openAl, GST_RANK_NONE);
        gst_object_unref(openAl);
    }
    return makeElement("autoaudiosink");
}

SoundOutput::SoundOutput(const MakeSoundSink& makeSink)
{
    ensureGStreamer();
    m_pipeline.reset(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new(nullptr))));
    m_source = addElement(m_pipeline.get(), "appsrc");
    GstElement* converter = addElement(m_pipeline.get(), "audioconvert");
    GstElement* resampler = addElement(m_pipeline.get(), "audioresample");
    const GstElementPtr sink = makeSink();
    gst_bin_add(GST_BIN(m_pipeline.get()), sink.get());
    const GstCapsPtr caps(gst_caps_from_string(format));
    g_object_set(m_source, "caps", caps.get(), "format", GST_FORMAT_TIME, "max-bytes", mostWaitingBytes,
                 "leaky-type", GST_APP_LEAKY_TYPE_DOWNSTREAM, nullptr);
    gst_element_link_many(m_source, converter, resampler, sink.get(), nullptr);
    // Times are those of the machine's steady clock, as for the pictures.
    GstClock* clock = gst_system_clock_obtain();
    gst_pipeline_use_clock(GST_PIPELINE(m_pipeline.get()), clock);
    gst_object_unref(clock);
    gst_element_set_start_time(m_pipeline.get(), GST_CLOCK_TIME_NONE);
    gst_element_set_base_time(m_pipeline.get(), 0);
    const GstBusPtr bus(gst_element_get_bus(m_pipeline.get()));
    gst_bus_set_sync_handler(bus.get(), onMessage, this, nullptr);
    const Handover handover;
    if (gst_element_set_state(m_pipeline.get(), GST_STATE_PLAYING) == GST_STATE_CHANGE_FAILURE)
        m_failed = true;
}

SoundOutput::~SoundOutput()
{
    gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
    const Handover handover;
}

void SoundOutput::play(const SoundPiece& piece, Clock::Instant at)
{
    GstBuffer* buffer =
        gst_buffer_new_memdup(piece.samples.data(), piece.samples.size() * sizeof(std::int16_t));
    GST_BUFFER_PTS(buffer) = clockTime(at);
    GST_BUFFER_DURATION(buffer) = static_cast<GstClockTime>(piece.end() - piece.position);
    const Handover handover;
    gst_app_src_push_buffer(GST_APP_SRC(m_source), buffer);
    m_silent = false;
}

void SoundOutput::silence()
{
    if (m_silent)
        return;
    gst_element_send_event(m_source, gst_event_new_flush_start());
    gst_element_send_event(m_source, gst_event_new_flush_stop(FALSE));
    m_silent = true;
}

GstBusSyncReply SoundOutput::onMessage(GstBus*, GstMessage* message, gpointer self)
{
    const Handover handover;
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR)
        static_cast<SoundOutput*>(self)->m_failed = true;
    gst_message_unref(message);
    return GST_BUS_DROP;
}

} // namespace stackreel
