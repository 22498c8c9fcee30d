#include "player/source/Orientation.h"

#include <cstring>

namespace stackreel
{

namespace
{

/// Where a row and a column of the upright plane lie in the stored one.
struct Walk {
    const std::uint8_t* origin;
    std::ptrdiff_t perColumn;
    std::ptrdiff_t perRow;
};

Walk walkOf(const PlaneView& source, Orientation orientation)
{
    const std::ptrdiff_t lastRow = (source.height - 1) * source.stride;
    // Mirroring comes first, so it is a property of how the stored rows are read.
    const std::uint8_t* left = source.data + (orientation.mirrored ? source.width - 1 : 0);
    const std::uint8_t* right = source.data + (orientation.mirrored ? 0 : source.width - 1);
    const std::ptrdiff_t rightwards = orientation.mirrored ? -1 : 1;
    switch (orientation.quarterTurns) {
    case 1:
        return {left + lastRow, -source.stride, rightwards};
    case 2:
        return {right + lastRow, -rightwards, -source.stride};
    case 3:
        return {right, source.stride, -rightwards};
    default:
        return {left, rightwards, source.stride};
    }
}

} // namespace

Orientation orientationFromTag(std::string_view tag)
{
    constexpr std::string_view flip = "flip-";
    Orientation orientation;
    if (tag.substr(0, flip.size()) == flip) {
        orientation.mirrored = true;
        tag.remove_prefix(flip.size());
    }
    if (tag == "rotate-90")
        orientation.quarterTurns = 1;
    else if (tag == "rotate-180")
        orientation.quarterTurns = 2;
    else if (tag == "rotate-270")
        orientation.quarterTurns = 3;
    else if (tag != "rotate-0")
        return {};
    return orientation;
}

void orientPlane(const PlaneView& source, Orientation orientation, std::uint8_t* target,
                 std::ptrdiff_t targetStride)
{
    const int columns = orientation.swapsSides() ? source.height : source.width;
    const int rows = orientation.swapsSides() ? source.width : source.height;
    const Walk walk = walkOf(source, orientation);
    for (int row = 0; row < rows; ++row) {
        const std::uint8_t* from = walk.origin + row * walk.perRow;
        std::uint8_t* to = target + row * targetStride;
        if (walk.perColumn == 1) {
            std::memcpy(to, from, static_cast<std::size_t>(columns));
            continue;
        }
        for (int column = 0; column < columns; ++column, from += walk.perColumn)
            to[column] = *from;
    }
}

} // namespace stackreel
