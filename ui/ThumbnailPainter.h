#pragma once

#include "player/base/VideoFrame.h"

#include <QImage>
#include <QRect>
#include <QSizeF>

#include <vector>

namespace stackreel
{

/// Paints a row of thumbnails into one image. Pure functions; usable on any thread.
struct ThumbnailPainter {
    static constexpr double spacing = 2;        ///< between two cells, in points
    static constexpr double cornerRadius = 5;   ///< of the whole row, in points
    static constexpr int placeholderCount = 12; ///< cells drawn while there are no thumbnails

    /// The rectangle of cell `index` of `count`, in whole device pixels so that its edges are sharp. `points`
    /// is the size of the row.
    static QRect cell(int index, int count, QSizeF points, double devicePixelRatio);
    /// The centred part of a picture that has the aspect ratio of a cell, so that it fills the cell without
    /// distortion.
    static QRectF cropToFill(QSize picture, QSize cell);
    /// Paints the row in device pixels, over black with an opacity of 0.72 and with rounded corners. Returns
    /// a null image for an empty size.
    static QImage paint(const std::vector<VideoFrame>& frames, QSizeF points, double devicePixelRatio);
};

} // namespace stackreel
