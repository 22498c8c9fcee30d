#include "player/stills/KeyFrameFinder.h"

#include "player/source/SampleTiming.h"

namespace stackreel
{

std::optional<Nanoseconds> KeyFrameFinder::atOrBefore(Nanoseconds time)
{
    const auto found = keyFrame(time, GST_SEEK_FLAG_SNAP_BEFORE);
    return found && *found <= time + halfUnit ? found : std::nullopt;
}

std::optional<Nanoseconds> KeyFrameFinder::atOrAfter(Nanoseconds time)
{
    const auto found = keyFrame(time, GST_SEEK_FLAG_SNAP_AFTER);
    return found && *found >= time - halfUnit ? found : std::nullopt;
}

std::optional<Nanoseconds> KeyFrameFinder::keyFrame(Nanoseconds time, GstSeekFlags snap)
{
    if (!m_opened && !m_source.next())
        return std::nullopt; // seeking needs a pipeline that has come as far as its first packet
    m_opened = true;
    if (!m_source.pipeline().seekToKeyFrame(time, snap))
        return std::nullopt;
    const GstSamplePtr sample = m_source.next();
    if (!sample || GST_BUFFER_FLAG_IS_SET(gst_sample_get_buffer(sample.get()), GST_BUFFER_FLAG_DELTA_UNIT))
        return std::nullopt;
    const Nanoseconds found = m_source.pipeline().timeOf(sample.get());
    return found >= 0 ? std::optional(found) : std::nullopt;
}

} // namespace stackreel
