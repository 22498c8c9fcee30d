#pragma once

#include <gst/pbutils/pbutils.h>

#include <filesystem>
#include <memory>
#include <stop_token>

namespace stackreel
{

struct GObjectUnref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
using DiscovererInfoPtr = std::unique_ptr<GstDiscovererInfo, GObjectUnref>;

/// What GStreamer finds in a file. Blocks until it is known, `timeoutSeconds` are over or `stop` fires.
/// Throws `std::runtime_error` when the file cannot be read as media.
DiscovererInfoPtr discover(const std::filesystem::path& file, int timeoutSeconds,
                           const std::stop_token& stop);

} // namespace stackreel
