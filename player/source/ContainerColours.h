#pragma once

#include <gst/video/video.h>

#include <mutex>

namespace stackreel
{

/// Prefers the colours in a stream of H.264 or H.265 to those in its container, as FFmpeg does. GStreamer
/// prefers the container's, and version 1.22 takes the full range in MP4 for the limited one. Works on
/// GStreamer's threads.
class ContainerColours
{
public:
    ContainerColours() = default;
    ContainerColours(const ContainerColours&) = delete;
    ContainerColours& operator=(const ContainerColours&) = delete;

    /// Removes the container's colours from what goes into a parser, which must not outlive this object.
    void removeBefore(GstElement* parser);
    /// Adds those that the stream itself does not have to the pictures that pass a pad, which must not
    /// outlive this object.
    void addTo(GstPad* pad);

private:
    static GstPadProbeReturn onParser(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    static GstPadProbeReturn onPictures(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    GstVideoColorimetry completed(GstVideoColorimetry colours);

    std::mutex m_mutex;
    GstVideoColorimetry m_container = {}; ///< guarded by the mutex
};

} // namespace stackreel
