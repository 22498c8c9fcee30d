#pragma once

#include "cli/CliOptions.h"
#include "framing/ExportCommandBuilder.h"
#include "media/MediaInfo.h"
#include "media/SourceDetails.h"

#include <filesystem>
#include <vector>

namespace stackreel
{

/// Throws `CliError` for a source that can be read only once or never ends: a pipe, a socket or a character
/// device. The tools read the source several times, and a tool that waits for a pipe ignores the request to
/// end. Every other problem, such as a missing source, is left to the tools.
void requireFile(const std::filesystem::path& source);

/// Makes the export request from the options, without the recipe or video that they name, and the properties
/// and sound tracks of the source. Its paths are absolute. Does
/// not check the destination.
///
/// Throws `UsageError` when the name of the destination does not end in ".mp4"; `CliError` when the range
/// begins after the source's end, when the source lacks the chosen sound track, or when a path is relative
/// and the working directory no longer exists; `MediaToolError` (invalid probe) when the frame size is not
/// usable.
ExportRequest planExport(const ExportOptions& options, const MediaInfo& media,
                         const std::vector<AudioTrack>& tracks = {});

/// Throws `CliError`, with a remedy, when the length is unknown, because no range can be chosen then.
void requireKnownLength(const MediaInfo& media, const std::filesystem::path& source);

} // namespace stackreel
