#include "tests/player/SoundPlaying.h"

#include "player/base/Handover.h"
#include "tests/support/Awaited.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace stackreel
{

namespace
{

double secondsBetween(std::chrono::steady_clock::time_point from, std::chrono::steady_clock::time_point to)
{
    return std::chrono::duration<double>(to - from).count();
}

} // namespace

std::chrono::steady_clock::time_point CapturedSound::Stretch::end() const
{
    return at + std::chrono::nanoseconds(std::llround((to - from) * 1e9));
}

GstElementPtr CapturedSound::makeSink()
{
    GstElementPtr sink = makeElement("appsink");
    ++m_sinks;
    ++m_openSinks;
    g_object_weak_ref(G_OBJECT(sink.get()), onSinkGone, this);
    g_object_set(sink.get(), "sync", FALSE, nullptr);
    GstAppSinkCallbacks callbacks = {};
    callbacks.new_sample = onSample;
    gst_app_sink_set_callbacks(GST_APP_SINK(sink.get()), &callbacks, this, nullptr);
    return sink;
}

std::vector<CapturedSound::Stretch> CapturedSound::stretches() const
{
    const std::lock_guard lock(m_mutex);
    return m_stretches;
}

void CapturedSound::forget()
{
    const std::lock_guard lock(m_mutex);
    m_stretches.clear();
}

GstFlowReturn CapturedSound::onSample(GstAppSink* sink, gpointer self)
{
    const Handover handover;
    const GstSamplePtr sample(gst_app_sink_pull_sample(sink));
    GstBuffer* buffer = gst_sample_get_buffer(sample.get());
    GstMapInfo map;
    gst_buffer_map(buffer, &map, GST_MAP_READ);
    std::int16_t first = 0;
    std::memcpy(&first, map.data, sizeof first);
    const double length = static_cast<double>(map.size) / 4 / 48000;
    gst_buffer_unmap(buffer, &map);
    auto* that = static_cast<CapturedSound*>(self);
    const std::lock_guard lock(that->m_mutex);
    const double from = first * 16 / 32768.0;
    that->m_stretches.push_back(
        {from, from + length,
         std::chrono::steady_clock::time_point(std::chrono::nanoseconds(GST_BUFFER_PTS(buffer)))});
    return GST_FLOW_OK;
}

void CapturedSound::onSinkGone(gpointer self, GObject*)
{
    --static_cast<CapturedSound*>(self)->m_openSinks;
}

SoundPlaying::SoundPlaying()
{
    player->setVideoOutput(output);
}

void SoundPlaying::loop(const std::filesystem::path& file, double start, double end)
{
    player->open(file, {MediaTime::fromSeconds(start), MediaTime::fromSeconds(end - start)});
}

bool SoundPlaying::receivesSound(std::size_t stretches) const
{
    return eventually([&] { return sound->stretches().size() >= stretches; });
}

bool SoundPlaying::isSilenced() const
{
    return eventually([&] { return sound->openSinks() == 0; });
}

void SoundPlaying::expectRuns(double start, double end, int wraps) const
{
    const auto stretches = sound->stretches();
    ASSERT_FALSE(stretches.empty());
    int found = 0;
    for (std::size_t i = 1; i < stretches.size(); ++i) {
        const auto& before = stretches[i - 1];
        EXPECT_GE(stretches[i].from, start - 0.001);
        EXPECT_LE(stretches[i].to, end + 0.001);
        if (stretches[i].from > before.from) {
            EXPECT_NEAR(stretches[i].from, before.to, 0.001) << i;
        } else {
            ++found;
            EXPECT_NEAR(before.to, end, 0.001) << "cut at the range's end";
            EXPECT_NEAR(stretches[i].from, start, 0.001) << "and starts at its start";
        }
    }
    EXPECT_GE(found, wraps);
}

void SoundPlaying::expectInSync() const
{
    std::vector<double> off = distances();
    ASSERT_GT(off.size(), 5U);
    // On a busy machine a frame may be shown late, and the clock waits for it. Most frames are on time.
    std::sort(off.begin(), off.end(), [](double a, double b) { return std::abs(a) < std::abs(b); });
    EXPECT_LT(std::abs(off[off.size() / 2]), 0.04);
}

std::vector<double> SoundPlaying::distances() const
{
    std::vector<double> found;
    const auto stretches = sound->stretches();
    for (const auto& shown : output->shown())
        for (const auto& stretch : stretches)
            if (stretch.at <= shown.at && shown.at < stretch.end())
                found.push_back(stretch.from + secondsBetween(stretch.at, shown.at) - shown.seconds);
    return found;
}

} // namespace stackreel
