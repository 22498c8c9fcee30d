#pragma once

#include "platform/playback/VideoFrame.h"

#include <QImage>
#include <QRect>
#include <QSizeF>

#include <vector>

namespace stackreel
{

/// Paints a row of thumbnails into one image. Pure functions; usable on any thread.
struct ThumbnailPainter {
    static constexpr double spacing = 2;      ///< between two cells, in points
    static constexpr double cornerRadius = 5; ///< of the whole row, in points
    static constexpr int placeholders = 12;   ///< cells drawn while there is no picture

    /// The cell of one of `count` pictures, in device pixels, so that its edges are sharp.
    static QRect cell(int index, int count, QSizeF points, double devicePixelRatio);
    /// The part of a picture that fills a cell, the picture's shape kept: its middle.
    static QRectF filling(QSize picture, QSize cell);
    /// The row, in device pixels, on black at opacity 0.72 and with its corners cut round. Empty for a size
    /// that is.
    static QImage row(const std::vector<VideoFrame>& frames, QSizeF points, double devicePixelRatio);
};

} // namespace stackreel
