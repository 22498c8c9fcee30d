#pragma once

#include "player/source/Orientation.h"

#include <filesystem>

namespace stackreel
{

/// How the first video track of an MP4 or QuickTime file is to be turned where GStreamer does not say so: it
/// overlooks one of the eight matrices, which turns a picture and mirrors it. Upright for every other matrix
/// and file, also for one that cannot be read.
///
/// Any thread; may take as long as the file system does.
Orientation ignoredOrientation(const std::filesystem::path& file);

} // namespace stackreel
