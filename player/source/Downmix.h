#pragma once

#include <gst/gst.h>

namespace stackreel
{

/// Tells an `audioconvert` that delivers two channels how to mix those of sound whose caps do not say where
/// they belong: by the usual order, which begins with front left and right, centre, deep. Without
/// this, more than two such channels are refused. Does nothing for anything else.
void mixUnplacedChannels(GstElement* converter, const GstCaps* caps);

} // namespace stackreel
