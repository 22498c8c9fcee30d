#pragma once

#include "cli/Failure.h"
#include "cli/FrontChange.h"
#include "cli/Progress.h"
#include "framing/PixelSize.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace stackreel
{

/// The properties of an export that has begun. Paths are absolute.
struct ExportFacts {
    std::filesystem::path source;
    std::filesystem::path file;
    PixelSize size;
    double seconds = 0; ///< the length of the exported video
};

/// What is known when an export has ended well.
struct ExportResult {
    std::optional<std::uintmax_t> bytes; ///< the size of the file; empty if it cannot be found out
    double seconds = 0;                  ///< the length that the file states
    double elapsedSeconds = 0;           ///< the time that the export took
    std::vector<FrontChange> changes;    ///< as the front reported them
};

/// How the exports of several sources have ended.
struct ExportTally {
    std::size_t saved = 0;
    std::size_t failed = 0;     ///< including the one that was cancelled
    std::size_t notStarted = 0; ///< after a cancellation
};

/// The lines of `export --json`: one JSON object each, with a final line feed, as
/// docs/export-events.schema.json describes them. Pure. Bytes that are not UTF-8 are replaced, except by
/// `started`.
struct ExportEvents {
    /// Throws `CliError` when the name of a file is not UTF-8, because JSON cannot represent it.
    static std::string started(const ExportFacts& facts);
    static std::string progress(const std::filesystem::path& source, const Progress& progress);
    static std::string finished(const ExportFacts& facts, const ExportResult& result);
    /// Without a source, none of several exports has begun.
    static std::string failed(const std::optional<std::filesystem::path>& source, const Failure& failure);
    static std::string summary(const ExportTally& tally);
};

} // namespace stackreel
