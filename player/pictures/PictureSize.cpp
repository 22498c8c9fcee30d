#include "player/pictures/PictureSize.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace stackreel
{

namespace
{

/// Even, because colour is stored at half the resolution and mirrored pictures would shift by half a pixel.
int evenSide(double side)
{
    return std::max(2, static_cast<int>(std::floor(side / 2 + 1e-6)) * 2);
}

/// A side up to two pixels shorter than the box gets the length of the box: whoever asks for a box of even
/// sides draws its picture pixel for pixel.
double filledSide(double side, int boxSide, double storedSide)
{
    return boxSide - side <= 2 && boxSide <= storedSide ? std::max<double>(side, boxSide) : side;
}

double limitOf(int boxSide, double side)
{
    return boxSide > 0 ? boxSide / side : 1.0;
}

} // namespace

PictureSize scaledSize(const GstVideoInfo& stored, Orientation orientation, PictureSize box)
{
    if (orientation.swapsSides())
        std::swap(box.width, box.height);
    double width = std::max(1, GST_VIDEO_INFO_WIDTH(&stored));
    double height = std::max(1, GST_VIDEO_INFO_HEIGHT(&stored));
    const int numerator = GST_VIDEO_INFO_PAR_N(&stored);
    const int denominator = GST_VIDEO_INFO_PAR_D(&stored);
    if (numerator > denominator && denominator > 0)
        width = width * numerator / denominator;
    else if (numerator > 0 && denominator > numerator)
        height = height * denominator / numerator;
    const double factor = std::min({1.0, limitOf(box.width, width), limitOf(box.height, height)});
    return {evenSide(filledSide(width * factor, box.width, width)),
            evenSide(filledSide(height * factor, box.height, height))};
}

} // namespace stackreel
