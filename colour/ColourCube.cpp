#include "colour/ColourCube.h"

namespace stackreel
{

ColourCube::ColourCube(const std::function<Rgb(const Rgb&)>& function)
{
    const auto value = [](int point) { return point / static_cast<double>(colourTablePoints - 1); };
    m_points.reserve(std::size_t{size} * size * size);
    for (int blue = 0; blue < colourTablePoints; ++blue)
        for (int green = 0; green < colourTablePoints; ++green)
            for (int red = 0; red < colourTablePoints; ++red) {
                const Rgb result = function({value(red), value(green), value(blue)});
                m_points.push_back(FourFloats{static_cast<float>(result[0]), static_cast<float>(result[1]),
                                              static_cast<float>(result[2]), 0});
            }
}

} // namespace stackreel
