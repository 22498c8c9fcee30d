#include "player/source/Downmix.h"

#include "player/base/GStreamer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace stackreel
{

namespace
{

using Matrix = std::vector<std::vector<float>>; ///< for each output side, the gains of all input channels

/// The mix matrix for sound with this number of channels and this channel mask in its caps.
Matrix matrixFor(int channels, guint64 mask)
{
    ensureGStreamer();
    const GstElementPtr converter = makeElement("audioconvert");
    const GstCapsPtr caps(gst_caps_new_simple("audio/x-raw", "channels", G_TYPE_INT, channels, "channel-mask",
                                              GST_TYPE_BITMASK, mask, nullptr));
    mixUnplacedChannels(converter.get(), caps.get());
    GValue value = G_VALUE_INIT;
    g_value_init(&value, GST_TYPE_ARRAY);
    g_object_get_property(G_OBJECT(converter.get()), "mix-matrix", &value);
    Matrix matrix;
    for (guint side = 0; side < gst_value_array_get_size(&value); ++side) {
        const GValue* row = gst_value_array_get_value(&value, side);
        auto& shares = matrix.emplace_back();
        for (guint channel = 0; channel < gst_value_array_get_size(row); ++channel)
            shares.push_back(g_value_get_float(gst_value_array_get_value(row, channel)));
    }
    g_value_unset(&value);
    return matrix;
}

/// The side that each channel is mixed to: l(eft), r(ight), b(oth) or - for none.
std::string sidesIn(const Matrix& matrix)
{
    std::string sides;
    for (std::size_t channel = 0; channel < matrix.at(0).size(); ++channel) {
        const bool left = matrix.at(0).at(channel) > 0;
        const bool right = matrix.at(1).at(channel) > 0;
        sides += left && right ? 'b' : left ? 'l' : right ? 'r' : '-';
    }
    return sides;
}

} // namespace

TEST(Downmix, MixesChannelsWithoutPositionsInTheirUsualOrder)
{
    const char* rows[] = {"lrb", "lrlr", "lrblr", "lrb-lr", "lrb-blr", "lrb-lrlr", "lrb-lrlrlr"};
    for (const std::string sides : rows) {
        const Matrix matrix = matrixFor(static_cast<int>(sides.size()), 0);
        ASSERT_EQ(matrix.size(), 2U) << sides;
        EXPECT_EQ(sidesIn(matrix), sides);
        for (const auto& shares : matrix) {
            float sum = 0;
            for (const float share : shares)
                sum += share;
            EXPECT_NEAR(sum, 1, 1e-5) << "the gains add up to 1, for " << sides;
        }
    }
}

TEST(Downmix, LeavesPositionedStereoAndMonoSoundUnchanged)
{
    constexpr guint64 fiveAndOne = 0x3f;
    EXPECT_TRUE(matrixFor(6, fiveAndOne).empty());
    EXPECT_TRUE(matrixFor(2, 0).empty());
    EXPECT_TRUE(matrixFor(1, 0).empty());
}

} // namespace stackreel
