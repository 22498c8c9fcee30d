#pragma once

#include "colour/ColourConversion.h"

#include <gst/video/video.h>

namespace stackreel
{

/// The colours of decoded pictures. What GStreamer does not know is guessed as for an export
/// (`conversionToBt709`).
struct SourceColours {
    GstVideoColorimetry colorimetry = {}; ///< nothing in it is unknown but transfer and primaries
    std::vector<std::string> tables = {}; ///< as in `ColourConversion`
};

/// The colours of pictures with these caps, which `info` is made from. Takes the text of the caps, because
/// `gst_video_info_from_caps` replaces everything where only the matrix is unknown.
SourceColours sourceColours(const GstCaps* caps, const GstVideoInfo& info);

} // namespace stackreel
