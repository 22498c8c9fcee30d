#pragma once

#include <string_view>

namespace stackreel
{

/// The two command-line programs that do the media work.
enum class MediaTool { ffmpeg, ffprobe };

/// The tool's executable file name.
std::string_view executableName(MediaTool tool);

} // namespace stackreel
