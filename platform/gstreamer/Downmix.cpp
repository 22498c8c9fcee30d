#include "platform/gstreamer/Downmix.h"

#include <array>
#include <vector>

namespace stackreel
{

namespace
{

using Shares = std::vector<float>; ///< of each channel in one that is delivered

/// Channels that are neither in front nor alone on their side are as loud as half the power.
constexpr float aside = 0.7071F;

std::array<Shares, 2> sharesOf(int channels)
{
    constexpr int centre = 2;
    constexpr int deep = 3; // left out, as is usual where there is no speaker for it
    const bool hasCentre = channels == 3 || channels > 4;
    std::array<Shares, 2> shares;
    for (int side = 0; side < 2; ++side) {
        float sum = 0;
        for (int channel = 0; channel < channels; ++channel) {
            const bool middle = hasCentre && channel == centre;
            const bool silent = channels > 5 && channel == deep;
            const bool here =
                middle || (channels == 5 && channel > centre ? channel - 3 : channel) % 2 == side;
            const float share = silent || !here ? 0 : channel < 2 ? 1 : aside;
            shares[static_cast<std::size_t>(side)].push_back(share);
            sum += share;
        }
        for (float& share : shares[static_cast<std::size_t>(side)])
            share /= sum;
    }
    return shares;
}

void appendTo(GValue* array, GValue* element)
{
    gst_value_array_append_value(array, element);
    g_value_unset(element);
}

} // namespace

void mixUnplacedChannels(GstElement* converter, const GstCaps* caps)
{
    const GstStructure* sound = gst_caps_get_structure(caps, 0);
    int channels = 0;
    guint64 places = 0;
    gst_structure_get_int(sound, "channels", &channels);
    gst_structure_get(sound, "channel-mask", GST_TYPE_BITMASK, &places, nullptr);
    if (channels <= 2 || places != 0)
        return;
    GValue matrix = G_VALUE_INIT;
    g_value_init(&matrix, GST_TYPE_ARRAY);
    for (const Shares& shares : sharesOf(channels)) {
        GValue row = G_VALUE_INIT;
        g_value_init(&row, GST_TYPE_ARRAY);
        for (const float share : shares) {
            GValue value = G_VALUE_INIT;
            g_value_init(&value, G_TYPE_FLOAT);
            g_value_set_float(&value, share);
            appendTo(&row, &value);
        }
        appendTo(&matrix, &row);
    }
    g_object_set_property(G_OBJECT(converter), "mix-matrix", &matrix);
    g_value_unset(&matrix);
}

} // namespace stackreel
