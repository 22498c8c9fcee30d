#pragma once

#include "player/base/GStreamer.h"
#include "player/base/Nanoseconds.h"
#include "player/source/ContainerColours.h"
#include "player/source/FirstPacket.h"
#include "player/source/KeyFrameFilter.h"
#include "player/source/OrientationTag.h"
#include "player/source/SourceFile.h"
#include "player/source/StreamSelector.h"
#include "player/source/TimeOrigin.h"

#include <gst/app/gstappsink.h>

#include <atomic>
#include <filesystem>
#include <functional>
#include <mutex>
#include <string>

namespace stackreel
{

/// Reads one stream of a file as fast as it is taken, a few pictures or some seconds of sound ahead: the
/// first video stream as raw pictures or as packets, or the first audio stream as interleaved 16-bit stereo
/// at 48 kHz. Keeps no clock and drops nothing. Times are counted from the file's first picture or sound
/// (`TimeOrigin`).
///
/// One thread at a time. Calls may take as long as the file system does.
class DecodePipeline
{
public:
    enum class Content { pictures, packets, sound };

    /// Opens the file and starts reading from its beginning. `wake` is called on threads of GStreamer's
    /// whenever `tryPull`, `atEnd` or `failed` may have changed, until the destructor returns; it must not
    /// call back. Throws `std::runtime_error` when an element is missing; what is wrong with the file shows
    /// in `failed`.
    DecodePipeline(const SourceFile& file, Content content, std::function<void()> wake);
    DecodePipeline(const DecodePipeline&) = delete;
    DecodePipeline& operator=(const DecodePipeline&) = delete;
    ~DecodePipeline();

    /// The next sample, or none when none is ready yet.
    GstSamplePtr tryPull();
    /// Where a sample that was pulled lies on the file's time line; negative when it does not say.
    Nanoseconds timeOf(GstSample* sample) const;
    /// Everything up to the stream's end was pulled.
    bool atEnd() const;
    /// Reading stopped early. What was decoded until then can still be pulled; seeking does not help. True
    /// only when samples can be pulled, if there are any.
    bool failed() const { return m_failed && (!m_started || m_origin.isKnown()); }
    /// Why reading stopped early, in GStreamer's words; empty when it did not. Any thread.
    std::string failureReason() const;
    /// Reading stopped before the wanted stream was found: no sample follows.
    bool lacksStream() const { return m_failed && !m_selector.isLinked(); }
    /// Whether the wanted stream has not been found yet.
    bool isOpening() const { return !m_selector.isLinked(); }
    /// Whether the demuxer has stopped reading before the wanted stream was found. decodebin drops an error
    /// that a demuxer reports while it is being added (seen with GStreamer 1.22), and nothing follows then.
    bool hasIdleDemuxer() const;
    /// Whether seeking is possible: something was decoded.
    bool started() const { return m_started && m_origin.isKnown(); }

    /// Goes on from a key frame: with `GST_SEEK_FLAG_SNAP_BEFORE` the last one that starts at or before
    /// `time`, as far as the container knows, with `GST_SEEK_FLAG_SNAP_AFTER` the first one at or after.
    /// Everything not pulled yet is dropped. False when the stream cannot seek there.
    bool seekToKeyFrame(Nanoseconds time, GstSeekFlags snap = GST_SEEK_FLAG_SNAP_BEFORE);
    /// Goes on from a key frame that is shown at or before `time`, with key frames only, and ends behind the
    /// first that is shown at `wanted` or later: the quickest way to a single one. Otherwise as above.
    bool seekToOneKeyFrame(Nanoseconds time, Nanoseconds wanted);
    /// Goes on from the very sample under `time`.
    bool seekToSample(Nanoseconds time);

    /// The pictures since the last seek have wrong times (`FirstPacket`). The file has to be opened again and
    /// read from its beginning.
    bool hasWrongTimes() const { return m_firstPacket.hasWrongTimes(); }

    /// How the pictures have to be turned.
    Orientation orientation() const { return m_orientation.get(); }
    /// The file's length as it claims; 0 when it does not say.
    Nanoseconds claimedDuration() const;

private:
    static void onElementAdded(GstBin* bin, GstBin* parent, GstElement* element, gpointer self);
    static GstBusSyncReply onMessage(GstBus* bus, GstMessage* message, gpointer self);
    static GstPadProbeReturn onQuery(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    static GstFlowReturn onSample(GstAppSink* sink, gpointer self);
    static void onEnd(GstAppSink* sink, gpointer self);

    void build(const std::filesystem::path& path, Content content);
    void watch();
    void limitQueue();
    void useOrigin();
    void fail(const std::string& reason);
    GstAppSink* sink() const { return GST_APP_SINK(m_sink); }
    bool seek(Nanoseconds time, GstSeekFlags flags);

    std::function<void()> m_wake;
    KeyFrameFilter m_keyFrameFilter;
    FirstPacket m_firstPacket;
    OrientationTag m_orientation;
    ContainerColours m_colours;
    GstElementPtr m_pipeline;
    GstElement* m_decoder = nullptr; ///< the pipeline's
    GstElement* m_sink = nullptr;    ///< the pipeline's
    GstPadPtr m_sinkPad;
    GstPadPtr m_demuxerPad;              ///< of the demuxer that was added last
    guint m_initialLimit = 0;            ///< samples in the queue until the time origin is known
    guint m_limit = 0;                   ///< samples in the queue from then on
    std::atomic<bool> m_running = false; ///< the queue may be limited
    std::atomic<bool> m_failed = false;
    mutable std::mutex m_mutex; ///< for the demuxer's pad and the reason
    std::string m_reason;       ///< of the first failure; guarded by the mutex
    std::atomic<bool> m_started = false;
    TimeOrigin m_origin; ///< destroyed before the sink, whose queue it limits
    StreamSelector m_selector;
};

} // namespace stackreel
