#include "player/source/Playability.h"

#include "player/source/BlockingReader.h"
#include "player/source/Discovery.h"

#include <chrono>
#include <stdexcept>
#include <string_view>

namespace stackreel
{

namespace
{

/// For discovery, whose time limit is in whole seconds, and for both it and the first picture.
constexpr int discoverySeconds = 3;
constexpr std::chrono::seconds timeLimit(5);

/// Whether the preview needs what is missing. Without a decoder for the sound it plays in silence; files from
/// cameras also carry tracks of data that nothing decodes.
bool isNeeded(std::string_view detail)
{
    for (std::string_view needed : {"|decoder-video/", "|demuxer", "|element-"}) {
        if (detail.find(needed) != std::string_view::npos)
            return true;
    }
    return false;
}

bool lacksNothingNeeded(GstDiscovererInfo* info)
{
    if (gst_discoverer_info_get_result(info) == GST_DISCOVERER_OK)
        return true;
    const gchar** detail = gst_discoverer_info_get_missing_elements_installer_details(info);
    for (; detail && *detail; ++detail) {
        if (isNeeded(*detail))
            return false;
    }
    return true;
}

bool hasVideo(GstDiscovererInfo* info)
{
    GList* streams = gst_discoverer_info_get_video_streams(info);
    bool found = false;
    for (GList* stream = streams; stream; stream = stream->next)
        found = found || !gst_discoverer_video_info_is_image(GST_DISCOVERER_VIDEO_INFO(stream->data));
    gst_discoverer_stream_info_list_free(streams);
    return found;
}

bool showsPicture(const std::filesystem::path& file, Clock::Instant latest, const std::stop_token& stop)
{
    try {
        BlockingReader reader(file, DecodePipeline::Content::pictures, stop);
        return reader.next(latest) != nullptr;
    } catch (const std::runtime_error&) {
        return false; // GStreamer lacks an element
    }
}

} // namespace

bool hasPlayableVideo(const std::filesystem::path& file, const std::stop_token& stop)
{
    const auto latest = std::chrono::steady_clock::now() + timeLimit;
    try {
        const DiscovererInfoPtr info = discover(file, discoverySeconds, stop);
        return lacksNothingNeeded(info.get()) && hasVideo(info.get());
    } catch (const std::runtime_error&) {
        return !stop.stop_requested() && showsPicture(file, latest, stop);
    }
}

} // namespace stackreel
