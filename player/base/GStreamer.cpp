#include "player/base/GStreamer.h"

#include "system/LargeBlocks.h"

#include <mutex>
#include <stdexcept>
#include <string>
#include <string_view>

namespace stackreel
{

namespace
{

/// Excludes the demuxers of gst-libav. The one for GIF does not stop at the end of the file, and seeking in
/// GXF does not return. Clips that need them get a preview copy.
void excludeLibavDemuxers()
{
    GstRegistry* registry = gst_registry_get();
    GList* features = gst_registry_get_feature_list_by_plugin(registry, "libav");
    for (GList* entry = features; entry; entry = entry->next) {
        auto* feature = static_cast<GstPluginFeature*>(entry->data);
        if (std::string_view(gst_plugin_feature_get_name(feature)).starts_with("avdemux_"))
            gst_plugin_feature_set_rank(feature, GST_RANK_NONE);
    }
    gst_plugin_feature_list_free(features);
}

} // namespace

void ensureGStreamer()
{
    static std::once_flag once;
    std::call_once(once, [] {
        returnLargeBlocksAtOnce();
        GError* error = nullptr;
        if (gst_init_check(nullptr, nullptr, &error))
            return excludeLibavDemuxers();
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
