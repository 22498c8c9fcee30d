#include "player/source/Downmix.h"

#include <string>
#include <vector>

namespace stackreel
{

namespace
{

using Shares = std::vector<float>; ///< of each channel in one that is delivered

/// Channels that are neither in front nor alone on their side are as loud as half the power.
constexpr float aside = 0.7071F;

/// Where each channel belongs: to the left, to the right, in the middle, or to a speaker for the deep. The
/// order is that of FLAC (RFC 9639, section 9.1.3), which WAVE's and FFmpeg's agree with; beyond eight
/// channels none is laid down.
std::string placesOf(int channels)
{
    switch (channels) {
    case 3:
        return "lrm";
    case 4:
        return "lrlr";
    case 5:
        return "lrmlr";
    case 7:
        return "lrmdmlr"; // one in the middle behind
    default:
        break;
    }
    std::string places = "lrmd";
    while (places.size() < static_cast<std::size_t>(channels))
        places += places.size() % 2 == 0 ? 'l' : 'r';
    return places;
}

/// What the channels have in the side that a letter names; in all as loud as a single channel.
Shares sharesIn(char side, const std::string& places)
{
    Shares shares;
    float sum = 0;
    for (std::size_t channel = 0; channel < places.size(); ++channel) {
        const bool here = places[channel] == side || places[channel] == 'm';
        // The deep is left out, as is usual where there is no speaker for it.
        shares.push_back(!here ? 0 : channel < 2 ? 1 : aside);
        sum += shares.back();
    }
    for (float& share : shares)
        share /= sum;
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
    for (const char side : {'l', 'r'}) {
        GValue row = G_VALUE_INIT;
        g_value_init(&row, GST_TYPE_ARRAY);
        for (const float share : sharesIn(side, placesOf(channels))) {
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
