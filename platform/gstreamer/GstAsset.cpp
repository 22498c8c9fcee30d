#include "platform/gstreamer/GstAsset.h"

#include "platform/gstreamer/SampleSource.h"

#include <chrono>
#include <stdexcept>

namespace stackreel
{

namespace
{

constexpr auto patience = std::chrono::seconds(10);

} // namespace

bool GstAsset::showsPictures(const std::stop_token& stop)
{
    if (m_showsPictures)
        return *m_showsPictures;
    SampleSource source(m_file, DecodePipeline::Content::pictures, stop);
    const bool shows = source.next(std::chrono::steady_clock::now() + patience) != nullptr;
    if (stop.stop_requested())
        throw std::runtime_error("stopped before anything was found out");
    m_showsPictures = shows;
    return shows;
}

} // namespace stackreel
