#include "platform/gstreamer/GStreamer.h"

#include "platform/LargeBlocks.h"

#include <mutex>
#include <stdexcept>
#include <string>

namespace stackreel
{

void ensureGStreamer()
{
    static std::once_flag once;
    std::call_once(once, [] {
        returnLargeBlocksAtOnce();
        GError* error = nullptr;
        if (gst_init_check(nullptr, nullptr, &error))
            return;
        const std::string reason = error ? error->message : "unknown reason";
        g_clear_error(&error);
        throw std::runtime_error("GStreamer cannot be used: " + reason);
    });
}

GstElementPtr makeElement(const char* factory)
{
    GstElement* element = gst_element_factory_make(factory, nullptr);
    if (!element)
        throw std::runtime_error(std::string("GStreamer's element ") + factory + " is missing");
    return GstElementPtr(GST_ELEMENT(gst_object_ref_sink(element)));
}

GstElement* addElement(GstElement* bin, const char* factory)
{
    GstElementPtr element = makeElement(factory);
    gst_bin_add(GST_BIN(bin), element.get());
    return element.get();
}

} // namespace stackreel
