#pragma once

#include "ffmpeg-shim/Changes.h"
#include "ffmpeg-shim/ColourFilters.h"

#include <vector>

namespace stackreel::shim
{

/// What `withBt709` does to the pictures, and what stays unconverted because nothing here converts it or this
/// FFmpeg cannot apply the table for it. Pure.
std::vector<Change> colourChanges(const ColourConversion& conversion, TableFilter filter);

} // namespace stackreel::shim
