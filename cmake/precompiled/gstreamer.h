#pragma once

#include "std.h"

#include <gst/app/gstappsink.h>
#include <gst/video/video.h>
