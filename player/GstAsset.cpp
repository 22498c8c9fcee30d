#include "player/GstAsset.h"

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
    if (m_failure)
        std::rethrow_exception(m_failure);
    try {
        if (!m_facts)
            m_facts = findOut(stop);
        return *m_facts;
    } catch (const std::runtime_error&) {
        if (!stop.stop_requested())
            m_failure = std::current_exception();
        throw;
    }
}

GstAsset::Facts GstAsset::findOut(const std::stop_token& stop) const
{
    const auto latest = std::chrono::steady_clock::now() + timeLimit;
    try {
        const DiscovererInfoPtr info = discover(m_file, discoverySeconds, stop);
        return {lacksNothingNeeded(info.get()), countVideoTracks(info.get())};
    } catch (const std::runtime_error&) {
        if (stop.stop_requested() || !showsPicture(latest, stop))
            throw;
        return {.playable = true, .videoTracks = 1};
    }
}

bool GstAsset::showsPicture(Clock::Instant latest, const std::stop_token& stop) const
{
    BlockingReader source(m_file, DecodePipeline::Content::pictures, stop);
    return source.next(latest) != nullptr;
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
