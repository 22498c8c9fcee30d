#pragma once

#include "framing/CropRegion.h"
#include "media/MediaInfo.h"

#include <rapidcheck.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <ostream>

namespace stackreel
{

/// Makes RapidCheck generate large numbers from the first case on. Without this, it starts with small ones.
template <typename T>
rc::Gen<T> atFullSize(rc::Gen<T> generator)
{
    return rc::gen::resize(rc::kNominalSize, std::move(generator));
}

/// Any bit pattern of a double, including the largest, the smallest, infinities and NaN.
inline rc::Gen<double> anyDouble()
{
    return rc::gen::oneOf(rc::gen::arbitrary<double>(),
                          rc::gen::map(atFullSize(rc::gen::arbitrary<std::uint64_t>()),
                                       [](std::uint64_t bits) { return std::bit_cast<double>(bits); }),
                          rc::gen::element(0.0, -0.0, 0.06, 0.94, 1.0, 5e-324, -5e-324,
                                           1.7976931348623157e308, -1.7976931348623157e308, 1e-300,
                                           0.06000000000000001, 0.9999999999999999));
}

/// A number from 0 to 1, often exactly 0 or 1.
inline rc::Gen<double> fraction()
{
    const auto steps = atFullSize(rc::gen::inRange<std::int64_t>(0, std::int64_t{1} << 53));
    return rc::gen::weightedOneOf<double>(
        {{8, rc::gen::map(steps,
                          [](std::int64_t step) { return static_cast<double>(step) / 9007199254740992.0; })},
         {1, rc::gen::just(0.0)},
         {1, rc::gen::just(1.0)}});
}

/// A number between two positive bounds, with a uniform distribution of its logarithm.
inline rc::Gen<double> ratioBetween(double lowest, double highest)
{
    return rc::gen::map(fraction(),
                        [=](double position) { return lowest * std::pow(highest / lowest, position); });
}

/// A region that lies inside the frame (see `CropRegion`).
inline rc::Gen<CropRegion> regionInFrame()
{
    return rc::gen::map(
        rc::gen::tuple(fraction(), fraction(), fraction(), fraction()), [](const auto& parts) {
            const auto [across, down, wide, high] = parts;
            const double width = 0.06 + wide * 0.94;
            const double height = 0.06 + high * 0.94;
            const CropRegion region = {
                .x = across * (1 - width), .y = down * (1 - height), .width = width, .height = height};
            return region.clampedToFrame();
        });
}

/// Whether a region lies inside the frame (see `CropRegion`).
inline bool isInFrame(const CropRegion& region)
{
    return region.width >= 0.06 && region.width <= 1 && region.height >= 0.06 && region.height <= 1 &&
           region.x >= 0 && region.x <= 1 - region.width && region.y >= 0 && region.y <= 1 - region.height;
}

inline MediaInfo mediaOf(std::int64_t width, std::int64_t height, std::int64_t rotation = 0)
{
    MediaInfo media;
    media.width = width;
    media.height = height;
    media.rotation = rotation;
    return media;
}

} // namespace stackreel

namespace rc
{

template <>
struct Arbitrary<stackreel::CropRegion> {
    static Gen<stackreel::CropRegion> arbitrary()
    {
        using stackreel::anyDouble;
        using stackreel::CropRegion;
        return gen::build<CropRegion>(
            gen::set(&CropRegion::x, anyDouble()), gen::set(&CropRegion::y, anyDouble()),
            gen::set(&CropRegion::width, anyDouble()), gen::set(&CropRegion::height, anyDouble()));
    }
};

} // namespace rc

namespace stackreel
{

inline void showValue(const CropRegion& region, std::ostream& stream)
{
    stream << std::hexfloat << "{" << region.x << ", " << region.y << ", " << region.width << ", "
           << region.height << "}";
}

inline std::ostream& operator<<(std::ostream& stream, const CropRegion& region)
{
    showValue(region, stream);
    return stream;
}

} // namespace stackreel
