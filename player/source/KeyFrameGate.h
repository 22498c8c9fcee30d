#pragma once

#include "player/base/GStreamer.h"
#include "player/base/Nanoseconds.h"

#include <atomic>

namespace stackreel
{

/// Stands before a decoder and, when one key frame is all that is wanted, lets nothing else through.
///
/// A decoder gives a picture away only when those behind it have come, up to a handful of them, or when the
/// stream ends. So behind the wanted key frame the gate ends it; the next flushing seek begins it anew.
class KeyFrameGate
{
public:
    /// Everything passes until told otherwise.
    KeyFrameGate() = default;
    KeyFrameGate(const KeyFrameGate&) = delete;
    KeyFrameGate& operator=(const KeyFrameGate&) = delete;

    /// Watches what goes into the decoder, which must not outlive the gate.
    void guard(GstElement* decoder);
    /// From the flushing seek on that follows: key frames only, and the end behind the first that starts at
    /// `time` or later. Any thread.
    void passOnly(Nanoseconds time) { m_wanted = time; }
    /// From the flushing seek on that follows: everything.
    void passAll() { m_wanted = everything; }

private:
    static constexpr Nanoseconds everything = -1;

    static GstPadProbeReturn onPad(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    GstPadProbeReturn pass(GstPad* pad, GstBuffer* buffer);

    std::atomic<Nanoseconds> m_wanted = everything;
    std::atomic<bool> m_passed = false; ///< the wanted key frame, since the last flush
};

} // namespace stackreel
