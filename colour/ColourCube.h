#pragma once

#include "colour/ColourTable.h"

#include <algorithm>
#include <array>
#include <bit>
#include <functional>
#include <vector>

namespace stackreel
{

/// Four numbers that the processor handles at once; the last one is unused.
using FourFloats = float __attribute__((vector_size(16)));
using FourInts = int __attribute__((vector_size(16)));

/// A function of three components from 0 to 1 as a table of `colourTablePoints` points each, with linear
/// interpolation in tetrahedra between them. FFmpeg's filter `lut3d` does the same with `interp=tetrahedral`.
/// Never changed once made.
class ColourCube
{
public:
    /// Calls `function` for each point, which takes some 20 ms for a table of high dynamic range.
    explicit ColourCube(const std::function<Rgb(const Rgb&)>& function);

    /// The value at a place whose components are counted in points, from 0 to `largest`. Others are clipped.
    FourFloats at(FourFloats place) const
    {
        const FourFloats most = FourFloats{} + std::bit_cast<float>(std::bit_cast<int>(largest) - 1);
        place = place > 0.0F ? place : FourFloats{};
        place = place < most ? place : most; // below the last point, so that there is a cube above
        const FourInts below = __builtin_convertvector(place, FourInts);
        const FourFloats rest = place - __builtin_convertvector(below, FourFloats);
        const float red = rest[0], green = rest[1], blue = rest[2];
        const float longest = std::max(std::max(red, green), blue);
        const float middle = std::max(std::min(red, green), std::min(std::max(red, green), blue));
        const float shortest = std::min(std::min(red, green), blue);
        // Without a branch, because the order changes from pixel to pixel.
        const Path& path =
            paths[(red >= green ? 1U : 0U) + (green >= blue ? 2U : 0U) + (red >= blue ? 4U : 0U)];
        const FourFloats* point = m_points.data() + (below[0] + size * (below[1] + size * below[2]));
        return *point * (1 - longest) + point[path.first] * (longest - middle) +
               point[path.second] * (middle - shortest) + point[redStep + greenStep + blueStep] * shortest;
    }

    static constexpr float largest = colourTablePoints - 1;

private:
    static constexpr int size = colourTablePoints;
    static constexpr int redStep = 1, greenStep = size, blueStep = size * size;

    /// The way from the point below a place to the one above it: along the component with the largest rest
    /// first. The two points in between, counted from the first.
    struct Path {
        int first;
        int second;
    };
    static constexpr std::array<Path, 8> paths{{{blueStep, blueStep + greenStep},
                                                {blueStep, blueStep + redStep},
                                                {greenStep, greenStep + blueStep},
                                                {}, // cannot be
                                                {}, // cannot be
                                                {redStep, redStep + blueStep},
                                                {greenStep, greenStep + redStep},
                                                {redStep, redStep + greenStep}}};

    std::vector<FourFloats> m_points; ///< red varies first
};

} // namespace stackreel
