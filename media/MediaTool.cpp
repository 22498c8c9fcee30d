#include "media/MediaTool.h"

namespace stackreel
{

std::string_view executableName(MediaTool tool)
{
    return tool == MediaTool::ffmpeg ? "ffmpeg" : "ffprobe";
}

} // namespace stackreel
