#pragma once

#include "player/source/Orientation.h"

#include <filesystem>

namespace stackreel
{

/// The orientation of the first video track of an MP4 or QuickTime file where GStreamer ignores it: it
/// ignores one of the eight display matrices, which turns a picture and mirrors it. Upright for every other
/// matrix and file, and for a file that cannot be read.
///
/// Any thread; may take as long as the file system does.
Orientation ignoredOrientation(const std::filesystem::path& file);

} // namespace stackreel
