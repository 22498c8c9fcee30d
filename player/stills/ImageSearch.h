#pragma once

#include "player/pictures/FrameReader.h"
#include "player/pictures/PlanarFrame.h"
#include "player/stills/KeyFrameFinder.h"

#include <chrono>
#include <optional>
#include <stop_token>

namespace stackreel
{

/// Finds frames near given times, for which it decodes as little as it can. One thread, which waits.
class ImageSearch
{
public:
    /// How far a frame may lie from the time asked for; not negative.
    struct Tolerance {
        Nanoseconds before = 0;
        Nanoseconds after = 0;
    };

    /// Throws `std::runtime_error` when GStreamer lacks an element. Every search ends when `stop` fires.
    ImageSearch(const SourceFile& file, PictureSize box, bool upright, std::stop_token stop);

    /// A frame that starts within the tolerance of `time`, or is on screen then; none when there is none.
    /// Times that grow from call to call cost the least.
    PlanarFramePtr near(Nanoseconds time, Tolerance tolerance);

private:
    std::optional<Nanoseconds> keyFrameNear(Nanoseconds time, Tolerance tolerance,
                                            std::optional<Nanoseconds> before);
    PlanarFramePtr decodeTowards(Nanoseconds time, Tolerance tolerance, std::optional<Nanoseconds> keyFrame);
    PlanarFramePtr read();

    struct Notify {
        WakeUp& wakeUp;
        void operator()() const { wakeUp.notify(); }
    };

    std::stop_token m_stop;
    WakeUp m_wakeUp;
    std::stop_callback<Notify> m_onStop;
    KeyFrameFinder m_finder;
    FrameReader m_reader;
    std::chrono::nanoseconds m_patience = std::chrono::seconds(5); ///< left for work of others
    PlanarFramePtr m_last;                                         ///< read last
};

} // namespace stackreel
