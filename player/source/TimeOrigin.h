#pragma once

#include "player/base/GStreamer.h"
#include "player/base/Nanoseconds.h"
#include "player/source/SourceFile.h"

#include <functional>
#include <memory>

namespace stackreel
{

/// Finds a file's time origin: the time of its first picture or sound, whichever is earlier. FFmpeg, which
/// makes the export, counts from there. GStreamer counts as the container does, whose times begin anywhere in
/// a stream made for broadcast or cut from another.
///
/// Any thread.
class TimeOrigin
{
public:
    /// If another reader of the file has found the origin, it is known from the start. Otherwise `found` is
    /// called at most once, on a thread of GStreamer's, before the destructor returns.
    TimeOrigin(SourceFile file, std::function<void()> found);
    TimeOrigin(const TimeOrigin&) = delete;
    TimeOrigin& operator=(const TimeOrigin&) = delete;
    ~TimeOrigin();

    /// Watches a pad that delivers pictures or sound. Call it for each, before data flows.
    void expect(GstPad* pad);
    /// Watches the input pad of a decoder. Call it for each, before data flows: a decoder may drop the first
    /// pictures or sound of a stream.
    void watchDecoder(GstPad* pad);
    /// No further pad follows.
    void noMoreStreams();
    /// Waits at most half a second more for streams without data.
    void startTimeout();

    bool isKnown() const;
    /// On the container's time line; 0 until it is known.
    Nanoseconds get() const;

private:
    struct State;

    static GstPadProbeReturn onPad(GstPad* pad, GstPadProbeInfo* info, gpointer state);
    static GstPadProbeReturn onDecoder(GstPad* pad, GstPadProbeInfo* info, gpointer state);
    static gboolean onTimeout(GstClock* clock, GstClockTime time, GstClockID timer, gpointer state);

    void probe(GstPad* pad, int types, GstPadProbeCallback callback);
    /// A reference to the state for a callback of GStreamer's, which passes it to `release` at the end.
    gpointer share() const;
    static void release(gpointer shared);

    std::shared_ptr<State> m_state;
    GstClockID m_timer = nullptr;
};

} // namespace stackreel
