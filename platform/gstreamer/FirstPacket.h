#pragma once

#include "platform/gstreamer/GStreamer.h"
#include "platform/gstreamer/Nanoseconds.h"

#include <atomic>

namespace stackreel
{

/// Remembers the first packet that goes into a decoder, and notices when it comes again after a seek at
/// another time: some fragmented files are stamped later from their first fragment on once it was sought.
class FirstPacket
{
public:
    FirstPacket() = default;
    FirstPacket(const FirstPacket&) = delete;
    FirstPacket& operator=(const FirstPacket&) = delete;

    /// Watches what goes into the decoder, which must not outlive this object. Only the first one is.
    void watch(GstElement* decoder);
    /// Whether times are wrong since the last flushing seek. Any thread; holds for what was decoded since.
    bool isDisplaced() const { return m_displaced; }

private:
    static GstPadProbeReturn onPad(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    void compare(GstBuffer* buffer, Nanoseconds time);

    std::atomic<bool> m_watches = false;
    // The decoder's streaming thread only.
    GstBufferPtr m_packet;
    Nanoseconds m_time = -1;
    bool m_compared = false; ///< the first packet since the last flush was

    std::atomic<bool> m_displaced = false;
};

} // namespace stackreel
