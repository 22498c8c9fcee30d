#pragma once

#include "player/base/GStreamer.h"
#include "player/base/Nanoseconds.h"

#include <atomic>

namespace stackreel
{

/// Drops everything before a decoder but key frames, when a single key frame is wanted.
///
/// A decoder outputs a picture only after several more packets or at the end of the stream. The filter
/// therefore ends the stream behind the wanted key frame. The next flushing seek starts it again.
class KeyFrameFilter
{
public:
    /// Passes everything.
    KeyFrameFilter() = default;
    KeyFrameFilter(const KeyFrameFilter&) = delete;
    KeyFrameFilter& operator=(const KeyFrameFilter&) = delete;

    /// Filters what goes into the decoder, which must not outlive this object.
    void watch(GstElement* decoder);
    /// From the next flushing seek on: passes key frames only, and ends the stream behind the first that
    /// starts at `time` or later. Any thread.
    void passOnly(Nanoseconds time) { m_wanted = time; }
    /// From the next flushing seek on: passes everything. Any thread.
    void passAll() { m_wanted = everything; }

private:
    static constexpr Nanoseconds everything = -1;

    static GstPadProbeReturn onPad(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    GstPadProbeReturn pass(GstPad* pad, GstBuffer* buffer);

    std::atomic<Nanoseconds> m_wanted = everything;
    std::atomic<bool> m_passed = false; ///< the wanted key frame, since the last flush
};

} // namespace stackreel
