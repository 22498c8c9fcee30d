#pragma once

#include "cli/CliOptions.h"
#include "framing/ExportCommandBuilder.h"
#include "media/MediaInfo.h"

#include <filesystem>

namespace stackreel
{

/// Throws `CliError` for a source that can be read only once or never ends: a pipe, a socket or a character
/// device. The tools read the source several times, and a tool that waits for a pipe ignores the request to
/// end. The tools report every other problem, such as a missing source.
void requireFile(const std::filesystem::path& source);

/// The export request for the options and a source with these facts, with absolute paths. Does not check the
/// destination.
///
/// Throws `UsageError` when the name of the destination does not end in ".mp4"; `CliError` when the range
/// begins after the source's end, or a path is relative and the working directory no longer exists;
/// `MediaToolError` (invalid probe) when the facts have no usable frame size.
ExportRequest planExport(const ExportOptions& options, const MediaInfo& media);

/// Throws `CliError`, with a remedy, when the length is unknown, because no range can be chosen then.
void requireKnownLength(const MediaInfo& media, const std::filesystem::path& source);

} // namespace stackreel
