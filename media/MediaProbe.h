#pragma once

#include "media/MediaInfo.h"
#include "media/ProbeDocument.h"

#include <QCoroTask>

#include <filesystem>
#include <stop_token>

namespace stackreel
{

/// Reads the properties of a video file. Keeps no state between calls.
struct MediaProbe {
    /// The properties of a usable source. Resumes on the calling thread, which needs a running event loop.
    /// The path must be absolute.
    ///
    /// Throws, in this order of precedence: what `report` throws; `MediaToolError` (no video) without a video
    /// stream that has a width and a height; `MediaToolError` (vertical source) when the displayed picture is
    /// not wider than it is high.
    static QCoro::Task<MediaInfo> inspect(std::filesystem::path source, std::stop_token stop = {});

    /// The report of `ffprobe` on any file. Throws `MediaToolError` when the tool is missing or fails, the
    /// errors of `ProcessRunner::run`, `TemporaryFolderFull`, and `DecodingError`.
    static QCoro::Task<ProbeDocument> report(std::filesystem::path source, std::stop_token stop = {});

    /// The properties in a report. Throws the same `MediaToolError`s as `inspect`. A pure function.
    static MediaInfo facts(const ProbeDocument& document);
};

} // namespace stackreel
