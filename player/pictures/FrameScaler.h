#pragma once

#include "player/pictures/ColourMapper.h"
#include "player/pictures/Deinterlacer.h"
#include "player/pictures/PictureSize.h"
#include "player/pictures/PlanarFrame.h"
#include "player/pictures/VideoBuffers.h"
#include "player/source/Orientation.h"

#include <gst/video/video.h>

#include <memory>
#include <optional>

namespace stackreel
{

/// Makes decoded pictures upright and small, and those of high dynamic range and of other primaries BT.709.
/// One thread.
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

    bool read(GstCaps* caps);
    void prepare(PictureSize size);
    GstBufferPtr convert(GstBuffer* stored);
    GstBufferPtr map(GstBuffer* scaled);
    GstBufferPtr turn(GstBuffer* small, Orientation orientation);

    PictureSize m_box;
    GstCapsPtr m_caps;               ///< of the sample before, from which come:
    GstVideoInfo m_decodedInfo = {}; ///< what the caps say
    GstVideoInfo m_storedInfo = {};  ///< with the colours as the export sees them, and no frame rate
    std::vector<std::string> m_tables;

    GstVideoInfo m_scaledInfo = {}; ///< of the converter's pictures
    GstVideoInfo m_smallInfo = {};  ///< the same after the colour tables
    GstVideoInfo m_uprightInfo = {};
    std::unique_ptr<GstVideoConverter, FreeConverter> m_converter;
    std::optional<ColourMapper> m_mapper; ///< where there are tables
    Deinterlacer m_deinterlacer;
    VideoBuffers m_scaled;
    VideoBuffers m_mapped;
    VideoBuffers m_upright;
};

} // namespace stackreel
