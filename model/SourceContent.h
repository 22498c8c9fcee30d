#pragma once

#include "media/ProbeDocument.h"

#include <QCoroTask>

#include <filesystem>
#include <stop_token>
#include <string_view>

namespace stackreel
{

/// What a source holds in a range, read from its packets. Needed where the source states less: Matroska and
/// Flash files have one length for picture and sound. Times are seconds from the source's first picture or
/// sound.
struct SourceContent {
    double pictureEnd =
        0;            ///< where the first picture stream ends; 0 without a packet in the range or after it
    double end = 0;   ///< where the last stream ends
    double start = 0; ///< of the first picture or sound, on the container's own clock
    bool hasSound = false; ///< whether the chosen sound stream has a packet inside the range

    /// Finds them in the output of `ffprobe` as `read` calls it. `audioTrack` is the sound stream, counted
    /// from 0. Lines that are not understood are skipped. Pure.
    static SourceContent parse(std::string_view packets, const ProbeDocument& source, double from, double to,
                               std::int64_t audioTrack = 0);

    /// Reads the source's packets from `from` to its end, which takes time where the source is large. Throws
    /// what `ProcessRunner::run` throws and `MediaToolError`.
    static QCoro::Task<SourceContent> read(std::filesystem::path file, ProbeDocument source, double from,
                                           double to, std::int64_t audioTrack, std::stop_token stop);

    bool operator==(const SourceContent&) const = default;
};

} // namespace stackreel
