#pragma once

#include "player/pictures/PictureSize.h"
#include "player/pictures/PlanarFrame.h"
#include "player/pictures/VideoBuffers.h"
#include "player/source/Orientation.h"

#include <gst/video/video.h>

#include <memory>

namespace stackreel
{

/// Makes decoded pictures upright and small. One thread.
class FrameScaler
{
public:
    /// What pictures have to fit into, in pixels; upright.
    explicit FrameScaler(PictureSize box) : m_box(box) {}

    /// Applies from the next picture on.
    void setBox(PictureSize box) { m_box = box; }
    PictureSize box() const { return m_box; }

    /// The picture of a decoded sample, with the given time and duration; none when the sample holds nothing
    /// that can be shown.
    PlanarFramePtr scale(GstSample* sample, Orientation orientation, Nanoseconds time, Nanoseconds duration);

private:
    struct FreeConverter {
        void operator()(GstVideoConverter* converter) const { gst_video_converter_free(converter); }
    };

    void prepare(const GstVideoInfo& stored, PictureSize size);
    GstBufferPtr convert(GstBuffer* stored);
    GstBufferPtr turn(GstBuffer* scaled, Orientation orientation);

    PictureSize m_box;
    GstVideoInfo m_storedInfo = {};
    GstVideoInfo m_scaledInfo = {};
    GstVideoInfo m_uprightInfo = {};
    std::unique_ptr<GstVideoConverter, FreeConverter> m_converter;
    VideoBuffers m_scaled;
    VideoBuffers m_upright;
};

} // namespace stackreel
