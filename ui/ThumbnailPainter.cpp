#include "ui/ThumbnailPainter.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace stackreel
{

namespace
{

/// An image that shares the pixels of the frame. Valid as long as the frame exists.
QImage imageOf(const VideoFrame& frame)
{
    return {reinterpret_cast<const uchar*>(frame.pixels), frame.width, frame.height,
            static_cast<qsizetype>(frame.bytesPerLine), QImage::Format_RGB32};
}

void paintFrame(QPainter& painter, const VideoFrame& frame, const QRect& cell)
{
    const QImage image = imageOf(frame);
    if (image.isNull() || cell.isEmpty())
        return;
    const QRect part = ThumbnailPainter::cropToFill(image.size(), cell.size()).toAlignedRect() & image.rect();
    // `QImage::scaled` averages all source pixels. `QPainter` would skip some when scaling down by much.
    painter.drawImage(cell.topLeft(),
                      image.copy(part).scaled(cell.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

QImage withRoundedCorners(const QImage& image, double radius)
{
    QImage rounded(image.size(), QImage::Format_ARGB32_Premultiplied);
    rounded.fill(Qt::transparent);
    QPainter painter(&rounded);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QBrush(image));
    painter.drawRoundedRect(QRectF(image.rect()), radius, radius);
    return rounded;
}

} // namespace

QRect ThumbnailPainter::cell(int index, int count, QSizeF points, double devicePixelRatio)
{
    const double width = std::max((points.width() - spacing * (count - 1)) / count, 0.0);
    const double left = index * (width + spacing);
    // The last cell ends exactly at the end of the row, in spite of rounding errors.
    const double right = index == count - 1 ? std::max(points.width(), left) : left + width;
    const auto pixel = [devicePixelRatio](double x) {
        return static_cast<int>(std::lround(x * devicePixelRatio));
    };
    return {pixel(left), 0, pixel(right) - pixel(left), pixel(points.height())};
}

QRectF ThumbnailPainter::cropToFill(QSize picture, QSize cell)
{
    const QSizeF size = QSizeF(cell).scaled(picture, Qt::KeepAspectRatio);
    return {(picture.width() - size.width()) / 2, (picture.height() - size.height()) / 2, size.width(),
            size.height()};
}

QImage ThumbnailPainter::paint(const std::vector<VideoFrame>& frames, QSizeF points, double devicePixelRatio)
{
    const QSize size = (points * devicePixelRatio).toSize();
    if (size.isEmpty())
        return {};
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor::fromRgbF(0, 0, 0, 0.72F));
    QPainter painter(&image);
    const int count = frames.empty() ? placeholderCount : static_cast<int>(frames.size());
    for (int index = 0; index < count; ++index) {
        const QRect area = cell(index, count, points, devicePixelRatio);
        if (frames.empty())
            painter.fillRect(area, QColor::fromRgbF(1, 1, 1, 0.07F));
        else
            paintFrame(painter, frames[static_cast<std::size_t>(index)], area);
    }
    painter.end();
    return withRoundedCorners(image, cornerRadius * devicePixelRatio);
}

} // namespace stackreel
