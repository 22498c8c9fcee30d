#pragma once

#include "ffmpeg-shim/Arguments.h"

#include <string>

namespace stackreel::shim
{

/// Changes the arguments of an export or of a preview copy so that its pictures are BT.709, see `withBt709`.
/// Asks the system's ffprobe for the colours of the source and, if these need a colour table, `ffmpeg` for
/// its filters. Returns the arguments unchanged if they are others or if ffprobe does not know the source.
///
/// If FFmpeg can apply neither our tables nor its own for high dynamic range, the pictures keep their
/// brightness, and one line on standard error says so.
Arguments withExportColours(Arguments arguments, const std::string& ffmpeg);

} // namespace stackreel::shim
