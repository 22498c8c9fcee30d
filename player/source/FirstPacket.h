#pragma once

#include "player/base/GStreamer.h"
#include "player/base/Nanoseconds.h"

#include <atomic>

namespace stackreel
{

/// Remembers the first packet of the pictures and detects when it comes again with another time after a seek:
/// in some fragmented files a seek into the first fragment gives later times from there on.
class FirstPacket
{
public:
    FirstPacket() = default;
    FirstPacket(const FirstPacket&) = delete;
    FirstPacket& operator=(const FirstPacket&) = delete;

    /// Watches what goes into the first element that is given, which must not outlive this object. Give it
    /// the parser where there is one: GStreamer 1.26's puts headers into the first packet, and not after a
    /// seek.
    void watch(GstElement* parserOrDecoder);
    /// Whether times are wrong since the last flushing seek. Any thread; holds for what was decoded since.
    bool hasWrongTimes() const { return m_wrongTimes; }

private:
    static GstPadProbeReturn onPad(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    void compare(GstBuffer* buffer, Nanoseconds time);

    std::atomic<bool> m_watches = false;
    // The streaming thread only.
    GstBufferPtr m_packet;
    Nanoseconds m_time = -1;
    bool m_compared = false; ///< the first packet since the last flush was

    std::atomic<bool> m_wrongTimes = false;
};

} // namespace stackreel
