#pragma once

#include "player/source/Orientation.h"

#include <gst/gst.h>

#include <atomic>

namespace stackreel
{

/// Reads the orientation of the pictures from the tags that pass a pad before them. Any thread.
class OrientationTag
{
public:
    OrientationTag() = default;
    OrientationTag(const OrientationTag&) = delete;
    OrientationTag& operator=(const OrientationTag&) = delete;

    /// The pad must not outlive this object.
    void watch(GstPad* pad);
    /// Upright until a tag has passed.
    Orientation get() const { return {m_quarterTurns, m_mirrored}; }

private:
    static GstPadProbeReturn onEvent(GstPad* pad, GstPadProbeInfo* info, gpointer self);

    std::atomic<int> m_quarterTurns = 0;
    std::atomic<bool> m_mirrored = false;
};

} // namespace stackreel
