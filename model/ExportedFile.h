#pragma once

#include "framing/PixelSize.h"
#include "media/ProbeDocument.h"

#include <QCoroTask>

#include <filesystem>
#include <stop_token>
#include <string>

namespace stackreel
{

/// Checks of a file that FFmpeg has written. A file that fails one is not shown as "Saved".
struct ExportedFile {
    /// Throws `ExportError` when there is no such file, although FFmpeg reported success.
    static void requireFile(const std::filesystem::path& file);
    /// The report of `ffprobe` on the file. Throws `ExportError`, without the file's name, which the user may
    /// not know, when the file cannot be read; `CancellationError`, and the other errors of
    /// `MediaProbe::report`.
    static QCoro::Task<ProbeDocument> report(std::filesystem::path file, std::stop_token stop);
    /// Throws `ExportError` unless the report has an upright H.264 picture of this size. Pure.
    static void requirePicture(const ProbeDocument& report, PixelSize size);
    /// Throws the `ExportError` for a file that differs from the request; `difference` is a sentence that
    /// begins with a small letter.
    [[noreturn]] static void fail(const std::string& difference);
};

} // namespace stackreel
