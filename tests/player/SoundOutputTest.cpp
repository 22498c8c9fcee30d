#include "player/sound/SoundOutput.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

SoundPiece hundredthOfASecond()
{
    SoundPiece piece;
    piece.samples.resize(2 * 480);
    return piece;
}

GstElementPtr referenceTo(const GstElementPtr& element)
{
    return GstElementPtr(GST_ELEMENT(gst_object_ref(element.get())));
}

/// The bytes that wait in the output's appsrc, in the pipeline of this sink.
guint64 waitingBytes(GstElement* sink)
{
    const GstElementPtr pipeline(GST_ELEMENT(gst_element_get_parent(sink)));
    GstIterator* sources = gst_bin_iterate_all_by_element_factory_name(GST_BIN(pipeline.get()), "appsrc");
    GValue item = G_VALUE_INIT;
    guint64 bytes = 0;
    EXPECT_EQ(gst_iterator_next(sources, &item), GST_ITERATOR_OK);
    g_object_get(g_value_get_object(&item), "current-level-bytes", &bytes, nullptr);
    g_value_unset(&item);
    gst_iterator_free(sources);
    return bytes;
}

} // namespace

TEST(SoundOutputTest, QueuesAtMostASecondForAStalledDevice)
{
    gst_init(nullptr, nullptr);
    const GstElementPtr sink = makeElement("appsink"); // nothing pulls its samples, like a stalled device
    g_object_set(sink.get(), "sync", FALSE, "max-buffers", 1, nullptr);
    SoundOutput output([&] { return referenceTo(sink); });
    const SoundPiece piece = hundredthOfASecond();
    for (int i = 0; i < 1000; ++i)
        output.play(piece, Clock::Instant(i * std::chrono::milliseconds(10)));
    EXPECT_LE(waitingBytes(sink.get()), 192000U);
    EXPECT_GT(waitingBytes(sink.get()), 96000U);
    output.silence();
}

} // namespace stackreel
