#pragma once

#include "cli/CliOptions.h"
#include "framing/ExportCommandBuilder.h"
#include "media/MediaInfo.h"

#include <filesystem>

namespace stackreel
{

/// Throws `CliError` for a source that can be read only once or never ends: a pipe, a socket or a character
/// device. The tools read it several times, and one that waits for a pipe does not even notice that it is to
/// end. Anything else, a missing source included, is left for the tools to judge.
void requireFile(const std::filesystem::path& source);

/// The export that the options ask for, of a source with these facts, with absolute paths. The destination is
/// not looked at.
///
/// Throws `UsageError` when the destination is not named as an MP4 file; `CliError` when the range begins
/// behind the source's end; `MediaToolError` (invalid probe) when the facts are no picture's.
/// `std::filesystem::filesystem_error` when there is no working directory.
ExportRequest planExport(const ExportOptions& options, const MediaInfo& media);

/// Throws `CliError`, with a remedy, when the length is not known, as nothing sensible can be exported then.
void requireKnownLength(const MediaInfo& media, const std::filesystem::path& source);

} // namespace stackreel
