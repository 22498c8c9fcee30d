#pragma once

#include <gst/gst.h>

namespace stackreel
{

/// Sets the mix matrix of an `audioconvert` that delivers two channels, for sound whose caps have no channel
/// positions: by the usual order, which begins with front left and right, centre, low frequency. GStreamer
/// refuses more than two such channels otherwise. Does nothing for other sound.
void mixUnplacedChannels(GstElement* converter, const GstCaps* caps);

} // namespace stackreel
