#pragma once

#include "ffmpeg-shim/Changes.h"

#include <string>

namespace stackreel::shim
{

/// Changes the arguments of an export or of a preview copy so that its pictures are BT.709, see `withBt709`.
/// Asks the system's ffprobe for the colours of the source and, if these need a colour table, `ffmpeg` for
/// its filters. Returns the arguments unchanged if they are others or if ffprobe does not describe the
/// source. Nothing is tagged as BT.709 then, because the source may be anything. The changes also name what
/// stays unconverted.
ChangedArguments withExportColours(Arguments arguments, const std::string& ffmpeg);

} // namespace stackreel::shim
