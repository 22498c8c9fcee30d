#include "player/source/DecodePipeline.h"

#include "tests/player/BrokenSound.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

namespace stackreel
{

namespace
{

/// Counts what GStreamer warns of, on any thread.
class Warnings
{
public:
    Warnings() : m_handler(g_log_set_handler("GStreamer", levels, onWarning, &m_count)) {}
    Warnings(const Warnings&) = delete;
    Warnings& operator=(const Warnings&) = delete;
    ~Warnings() { g_log_remove_handler("GStreamer", m_handler); }

    int count() const { return m_count; }

private:
    static constexpr auto levels = static_cast<GLogLevelFlags>(G_LOG_LEVEL_WARNING | G_LOG_LEVEL_CRITICAL);

    static void onWarning(const gchar* domain, GLogLevelFlags level, const gchar* text, gpointer count)
    {
        ++*static_cast<std::atomic<int>*>(count);
        g_log_default_handler(domain, level, text, nullptr);
    }

    std::atomic<int> m_count = 0;
    guint m_handler;
};

/// Opens a file and closes it as soon as something was decoded or failed, which is while decodebin still
/// links its streams.
void openAndCloseEarly(const std::filesystem::path& file)
{
    DecodePipeline pipeline(SourceFile(file), DecodePipeline::Content::sound, [] {});
    const auto latest = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (!pipeline.failed() && !pipeline.started() && std::chrono::steady_clock::now() < latest)
        std::this_thread::sleep_for(std::chrono::microseconds(10));
}

} // namespace

/// Runs four threads at a time, because the moment when streams are linked is short.
TEST(DecodePipeline, StopsAllItsThreadsWhileItsStreamsAreLinked)
{
    ensureGStreamer();
    const Warnings warnings;
    const std::filesystem::path file = clipsOfBrokenSound().at(1);
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&file] {
            for (int round = 0; round < 25; ++round)
                openAndCloseEarly(file);
        });
    threads.clear();
    EXPECT_EQ(warnings.count(), 0);
}

} // namespace stackreel
