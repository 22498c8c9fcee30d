#include "framing/CropRegion.h"

#include "media/MediaInfo.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace stackreel
{

namespace
{

constexpr double smallestSide = 0.06;

double clampedSide(double side)
{
    return std::min(side > smallestSide ? side : smallestSide, 1.0);
}

double clampedOrigin(double origin, double side)
{
    return std::min(origin > 0 ? origin : 0.0, 1 - side);
}

[[noreturn]] void failInvariant(const char* rule)
{
    std::fprintf(stderr, "stackreel: crop region: %s\n", rule);
    std::abort();
}

std::int64_t flooredProduct(double fraction, std::int64_t length)
{
    constexpr double limit = 9223372036854775808.0; // 2^63
    const double product = std::floor(fraction * static_cast<double>(length));
    if (!(product >= -limit && product < limit))
        failInvariant("a coordinate does not fit 64 bits");
    return static_cast<std::int64_t>(product);
}

std::int64_t floorToEven(std::int64_t value)
{
    return value & ~std::int64_t{1};
}

std::int64_t remainingSpan(std::int64_t length, std::int64_t origin)
{
    std::int64_t span = 0;
    if (__builtin_sub_overflow(length, origin, &span))
        failInvariant("a span does not fit 64 bits");
    return span;
}

} // namespace

std::pair<CropRegion, CropRegion> CropRegion::initialPair(double sourceAspect, double panelAspect)
{
    const double ratio = panelAspect / sourceAspect;
    double height = 0.72;
    double width = ratio * 0.72;
    if (width > 0.46) {
        width = std::min(width, 0.64);
        height = width / ratio;
    }
    if (height > 0.86) {
        height = 0.86;
        width = ratio * 0.86;
    }
    const double y = (1 - height) * 0.5;
    const double right = std::min(std::max(0.96 - width, 0.04), (1 - width) - 0.04);
    const CropRegion top = {.x = 0.04, .y = y, .width = width, .height = height};
    const CropRegion bottom = {.x = right, .y = y, .width = width, .height = height};
    return {top.clampedToFrame(), bottom.clampedToFrame()};
}

CropRegion CropRegion::adaptingAspect(double sourceAspect, double panelAspect) const
{
    const double centreX = x + width * 0.5;
    const double centreY = y + height * 0.5;
    const double ratio = panelAspect / sourceAspect;
    double newWidth = width;
    double newHeight = width / ratio;
    if (newHeight > 0.94) {
        newHeight = 0.94;
        newWidth = ratio * 0.94;
    }
    if (newWidth > 0.94) {
        newWidth = 0.94;
        newHeight = 0.94 / ratio;
    }
    const CropRegion adapted = {.x = centreX - newWidth * 0.5,
                                .y = centreY - newHeight * 0.5,
                                .width = newWidth,
                                .height = newHeight};
    return adapted.clampedToFrame();
}

CropRegion CropRegion::clampedToFrame() const
{
    CropRegion clamped;
    clamped.width = clampedSide(width);
    clamped.height = clampedSide(height);
    clamped.x = clampedOrigin(x, clamped.width);
    clamped.y = clampedOrigin(y, clamped.height);
    return clamped;
}

PixelCrop CropRegion::sourcePixels(const MediaInfo& media) const
{
    const std::int64_t frameWidth = media.displayedWidth();
    const std::int64_t frameHeight = media.displayedHeight();
    const std::int64_t two = 2;

    PixelCrop crop;
    crop.x = floorToEven(std::max(flooredProduct(x, frameWidth), std::int64_t{0}));
    crop.y = floorToEven(std::max(flooredProduct(y, frameHeight), std::int64_t{0}));
    crop.width = std::min(remainingSpan(frameWidth, crop.x),
                          floorToEven(std::max(flooredProduct(width, frameWidth), two)));
    crop.height = std::min(remainingSpan(frameHeight, crop.y),
                           floorToEven(std::max(flooredProduct(height, frameHeight), two)));
    return crop;
}

} // namespace stackreel
