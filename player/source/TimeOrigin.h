#pragma once

#include "player/base/GStreamer.h"
#include "player/base/Nanoseconds.h"
#include "player/source/SourceFile.h"

#include <functional>
#include <memory>

namespace stackreel
{

/// Finds out where a file's time line begins: where its first picture or sound does, whichever is earlier.
/// FFmpeg, which has the last word in the export, counts its seconds from there, GStreamer the container's
/// own, and those begin anywhere in a stream made for broadcast or in one cut from another.
///
/// Any thread.
class TimeOrigin
{
public:
    /// What another reader of the file found out holds from the start. Otherwise `found` is called once, on a
    /// thread of GStreamer's, before the destructor returns or never.
    TimeOrigin(SourceFile file, std::function<void()> found);
    TimeOrigin(const TimeOrigin&) = delete;
    TimeOrigin& operator=(const TimeOrigin&) = delete;
    ~TimeOrigin();

    /// To be told of each pad by which pictures or sound come, before anything does.
    void expect(GstPad* pad);
    /// To be told of each pad by which something goes into a decoder, before anything does. The stream begins
    /// there, though a decoder may swallow its first pictures or sound.
    void heed(GstPad* pad);
    /// No further pad is to be expected.
    void expectNoMore();
    /// From now on a stream that is still silent is waited for half a second only.
    void hurry();

    bool isKnown() const;
    /// On the container's time line; 0 as long as it is not known.
    Nanoseconds get() const;

private:
    struct State;

    static GstPadProbeReturn onPad(GstPad* pad, GstPadProbeInfo* info, gpointer state);
    static GstPadProbeReturn onDecoder(GstPad* pad, GstPadProbeInfo* info, gpointer state);
    static gboolean onImpatience(GstClock* clock, GstClockTime time, GstClockID timer, gpointer state);

    void probe(GstPad* pad, int types, GstPadProbeCallback callback);
    /// A share of the state for what GStreamer calls back, which gives it to `letGo` in the end.
    gpointer share() const;
    static void letGo(gpointer shared);

    std::shared_ptr<State> m_state;
    GstClockID m_timer = nullptr;
};

} // namespace stackreel
