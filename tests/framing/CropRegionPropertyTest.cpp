#include "tests/framing/Generators.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace stackreel
{

namespace
{

/// Aspect ratios of sources and halves, from extremely tall to extremely wide.
rc::Gen<double> aspect()
{
    return ratioBetween(1e-6, 1e6);
}

bool isClose(double one, double other, double tolerance = 1e-12)
{
    return std::abs(one - other) <= tolerance * std::max({1.0, std::abs(one), std::abs(other)});
}

bool isUnclamped(double side)
{
    return side > 0.06 && side < 1;
}

} // namespace

RC_GTEST_PROP(ClampingToTheFrame, MovesAnyRegionIntoTheFrame, (const CropRegion& region))
{
    RC_ASSERT(isInFrame(region.clampedToFrame()));
}

RC_GTEST_PROP(ClampingToTheFrame, ChangesNothingASecondTime, (const CropRegion& region))
{
    const CropRegion clamped = region.clampedToFrame();
    RC_ASSERT(clamped.clampedToFrame() == clamped);
}

RC_GTEST_PROP(ClampingToTheFrame, ChangesNothingInsideTheFrame, ())
{
    const CropRegion region = *regionInFrame();
    RC_ASSERT(isInFrame(region));
    RC_ASSERT(region.clampedToFrame() == region);
}

RC_GTEST_PROP(InitialPair, LiesInTheFrameForAnyAspects, ())
{
    const auto [top, bottom] = CropRegion::initialPair(*anyDouble(), *anyDouble());
    RC_ASSERT(isInFrame(top));
    RC_ASSERT(isInFrame(bottom));
}

RC_GTEST_PROP(InitialPair, HasEqualCentredRegionsWithThePanelAspect, ())
{
    const double sourceAspect = *ratioBetween(1.001, 20);
    const double panelAspect = *ratioBetween(0.1, 20);
    const auto [top, bottom] = CropRegion::initialPair(sourceAspect, panelAspect);
    RC_ASSERT(top.width == bottom.width);
    RC_ASSERT(top.height == bottom.height);
    RC_ASSERT(top.y == bottom.y);
    RC_PRE(isUnclamped(top.width) && isUnclamped(top.height));
    RC_ASSERT(top.width <= 0.64 && top.height <= 0.86);
    RC_ASSERT(isClose(top.y + top.height * 0.5, 0.5));
    RC_ASSERT(isClose(top.width / top.height * sourceAspect, panelAspect));
    RC_ASSERT(top.x == 0.04);
    RC_ASSERT(isClose(bottom.x + bottom.width, 0.96));
}

RC_GTEST_PROP(AdaptingAspect, StaysInTheFrameForAnyInput, (const CropRegion& region))
{
    RC_ASSERT(isInFrame(region.adaptingAspect(*anyDouble(), *anyDouble())));
}

RC_GTEST_PROP(AdaptingAspect, StaysInTheFrameForRegionsInIt, ())
{
    const CropRegion region = *regionInFrame();
    RC_ASSERT(isInFrame(region.adaptingAspect(*aspect(), *aspect())));
}

RC_GTEST_PROP(AdaptingAspect, HasThePanelAspect, ())
{
    const CropRegion region = *regionInFrame();
    const double sourceAspect = *ratioBetween(1.001, 20);
    const double panelAspect = *ratioBetween(0.1, 20);
    const CropRegion adapted = region.adaptingAspect(sourceAspect, panelAspect);
    RC_PRE(isUnclamped(adapted.width) && isUnclamped(adapted.height));
    RC_ASSERT(adapted.width <= 0.94 && adapted.height <= 0.94);
    RC_ASSERT(isClose(adapted.width / adapted.height * sourceAspect, panelAspect));
}

RC_GTEST_PROP(AdaptingAspect, KeepsTheCentreUnlessClamped, ())
{
    const CropRegion region = *regionInFrame();
    const CropRegion adapted = region.adaptingAspect(*ratioBetween(1.001, 20), *ratioBetween(0.1, 20));
    RC_PRE(isUnclamped(adapted.width) && isUnclamped(adapted.height));
    if (adapted.x > 0 && adapted.x < 1 - adapted.width)
        RC_ASSERT(isClose(adapted.x + adapted.width * 0.5, region.x + region.width * 0.5));
    if (adapted.y > 0 && adapted.y < 1 - adapted.height)
        RC_ASSERT(isClose(adapted.y + adapted.height * 0.5, region.y + region.height * 0.5));
}

RC_GTEST_PROP(AdaptingAspect, KeepsTheWidthUnlessASideIsTooLarge, ())
{
    const CropRegion region = *regionInFrame();
    const double sourceAspect = *ratioBetween(1.001, 20);
    const double panelAspect = *ratioBetween(0.1, 20);
    RC_PRE(region.width <= 0.94 && region.width / (panelAspect / sourceAspect) <= 0.94);
    RC_ASSERT(region.adaptingAspect(sourceAspect, panelAspect).width == region.width);
}

} // namespace stackreel
