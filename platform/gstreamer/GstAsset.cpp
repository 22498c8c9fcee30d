#include "platform/gstreamer/GstAsset.h"

#include "platform/gstreamer/Discovery.h"

#include <string_view>

namespace stackreel
{

namespace
{

constexpr int timeoutSeconds = 10;

/// Whether what is missing is needed for picture or sound: files from cameras carry tracks of data that
/// nothing decodes and nobody needs.
bool isNeeded(std::string_view detail)
{
    for (std::string_view needed : {"|decoder-video/", "|decoder-audio/", "|demuxer", "|element-"}) {
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

int countVideoTracks(GstDiscovererInfo* info)
{
    int count = 0;
    GList* streams = gst_discoverer_info_get_video_streams(info);
    for (GList* stream = streams; stream; stream = stream->next) {
        if (!gst_discoverer_video_info_is_image(GST_DISCOVERER_VIDEO_INFO(stream->data)))
            ++count;
    }
    gst_discoverer_stream_info_list_free(streams);
    return count;
}

} // namespace

const GstAsset::Facts& GstAsset::facts(const std::stop_token& stop)
{
    if (!m_facts) {
        const DiscovererInfoPtr info = discover(m_file, timeoutSeconds, stop);
        m_facts = {lacksNothingNeeded(info.get()), countVideoTracks(info.get())};
    }
    return *m_facts;
}

bool GstAsset::isPlayable(std::stop_token stop)
{
    return facts(stop).playable;
}

int GstAsset::videoTrackCount(std::stop_token stop)
{
    return facts(stop).videoTracks;
}

} // namespace stackreel
