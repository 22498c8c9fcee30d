#pragma once

#include <gst/gst.h>

#include <memory>

namespace stackreel
{

/// Prepares GStreamer, once; any thread. The first call reads the plugin registry, which after an update of
/// the system takes seconds, so it is made on worker threads. Throws `std::runtime_error` when GStreamer
/// cannot be used at all.
void ensureGStreamer();

struct GstObjectUnref {
    void operator()(gpointer object) const { gst_object_unref(object); }
};
struct GstMiniObjectUnref {
    template <typename T>
    void operator()(T* object) const
    {
        gst_mini_object_unref(GST_MINI_OBJECT_CAST(object));
    }
};
using GstElementPtr = std::unique_ptr<GstElement, GstObjectUnref>;
using GstPadPtr = std::unique_ptr<GstPad, GstObjectUnref>;
using GstBusPtr = std::unique_ptr<GstBus, GstObjectUnref>;
using GstBufferPoolPtr = std::unique_ptr<GstBufferPool, GstObjectUnref>;
using GstCapsPtr = std::unique_ptr<GstCaps, GstMiniObjectUnref>;
using GstSamplePtr = std::unique_ptr<GstSample, GstMiniObjectUnref>;
using GstBufferPtr = std::unique_ptr<GstBuffer, GstMiniObjectUnref>;

/// A new element that belongs to the caller. Throws `std::runtime_error` naming the factory when the plugin
/// that has it is not installed.
GstElementPtr makeElement(const char* factory);
/// The same, handed to `bin`, which owns it from then on.
GstElement* addElement(GstElement* bin, const char* factory);

} // namespace stackreel
