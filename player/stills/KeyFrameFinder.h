#pragma once

#include "player/base/Nanoseconds.h"
#include "player/source/BlockingReader.h"

#include <optional>
#include <stop_token>

namespace stackreel
{

/// Finds the key frames of a file without decoding: reads a few packets for each answer. One thread, which
/// waits for the answers; there are none after `stop` fires.
class KeyFrameFinder
{
public:
    /// Throws `std::runtime_error` when GStreamer lacks an element.
    KeyFrameFinder(const SourceFile& file, std::stop_token stop)
        : m_source(file, DecodePipeline::Content::packets, std::move(stop))
    {
    }

    /// The time of the last key frame at or before `time`; none when it cannot be found.
    std::optional<Nanoseconds> atOrBefore(Nanoseconds time);
    /// The time of the first key frame at or after `time`; none when there is none or it cannot be found.
    std::optional<Nanoseconds> atOrAfter(Nanoseconds time);

private:
    std::optional<Nanoseconds> keyFrame(Nanoseconds time, GstSeekFlags snap);

    BlockingReader m_source;
    bool m_opened = false;
};

} // namespace stackreel
