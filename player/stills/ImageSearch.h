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
    /// Throws `std::runtime_error` when GStreamer lacks an element. Every search ends when `stop` fires.
    ImageSearch(const SourceFile& file, PictureSize box, std::stop_token stop);

    /// A frame that starts within the tolerance (not negative) of `time`, or is on screen then; none when
    /// there is none. Times that grow from call to call cost the least.
    PlanarFramePtr near(Nanoseconds time, Nanoseconds tolerance);

private:
    std::optional<Nanoseconds> keyFrameNear(Nanoseconds time, Nanoseconds tolerance,
                                            std::optional<Nanoseconds> before);
    PlanarFramePtr decodeTowards(Nanoseconds time, Nanoseconds tolerance,
                                 std::optional<Nanoseconds> keyFrame);
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
    std::chrono::nanoseconds m_patience = std::chrono::seconds(5); ///< left for foreground work
    PlanarFramePtr m_last;                                         ///< read last
};

} // namespace stackreel
