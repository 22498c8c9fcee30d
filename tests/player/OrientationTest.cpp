#include "platform/gstreamer/Orientation.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace stackreel
{

namespace
{

/// The picture "abc" over "def", turned.
std::string turned(Orientation orientation)
{
    const std::array<std::uint8_t, 8> stored = {'a', 'b', 'c', '.', 'd', 'e', 'f', '.'};
    const int columns = orientation.swapsSides() ? 2 : 3;
    const int rows = orientation.swapsSides() ? 3 : 2;
    std::array<std::uint8_t, 15> upright{};
    orientPlane({stored.data(), 4, 3, 2}, orientation, upright.data(), 5);
    std::string text;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column)
            text += static_cast<char>(upright.at(static_cast<std::size_t>(row * 5 + column)));
        text += '/';
    }
    return text;
}

} // namespace

TEST(Orientation, readsTheTagAndTurnsPicturesByIt)
{
    const struct {
        const char* tag;
        Orientation orientation;
        const char* picture;
    } rows[] = {
        {"rotate-0", {0, false}, "abc/def/"},
        {"rotate-90", {1, false}, "da/eb/fc/"},
        {"rotate-180", {2, false}, "fed/cba/"},
        {"rotate-270", {3, false}, "cf/be/ad/"},
        {"flip-rotate-0", {0, true}, "cba/fed/"},
        {"flip-rotate-90", {1, true}, "fc/eb/da/"},
        {"flip-rotate-180", {2, true}, "def/abc/"},
        {"flip-rotate-270", {3, true}, "ad/be/cf/"},
        {"", {0, false}, "abc/def/"},
        {"rotate-45", {0, false}, "abc/def/"},
        {"flip-", {0, false}, "abc/def/"},
        {"flip-sideways", {0, false}, "abc/def/"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(orientationFromTag(row.tag), row.orientation) << row.tag;
        EXPECT_EQ(turned(row.orientation), row.picture) << row.tag;
    }
}

} // namespace stackreel
