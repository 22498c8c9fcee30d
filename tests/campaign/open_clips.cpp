/// Does with each clip what the window does: decides whether it can be played, makes a copy for the preview
/// where it cannot, makes the thumbnails, and loops and scrubs the preview.
///
/// open_clips < LIST
///
/// A line of the list is a duration in seconds, a blank and the name of a file. Prints for each clip a line
/// "begin FILE", and a line "end" with the seconds of each step, the peak of memory in MiB, the number of
/// thumbnails and the number of frames shown; the fields are separated by tabs. The process ends when a step
/// takes more than ten seconds or when it uses more than 1 GiB.

#include "benchmarks/player/Measuring.h"
#include "benchmarks/player/PreviewedClip.h"
#include "media/MediaPipeline.h"
#include "player/GStreamerStills.h"
#include "tests/campaign/ProcessFigures.h"
#include "tests/campaign/Watchdog.h"
#include "tests/support/Awaited.h"
#include "tests/support/ProcessEnd.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <string>
#include <type_traits>

using namespace stackreel;
using namespace std::chrono_literals;

namespace
{

class OpeningClips
{
public:
    void open(const std::filesystem::path& file, double duration)
    {
        std::printf("begin\t%s\n", file.c_str());
        std::fflush(stdout);
        m_watchdog.takePeak();
        m_line = "end";
        const auto shown = step("playable", [&] { return preview(file); });
        if (!shown.empty()) {
            const auto images = step("thumbnails", [&] { return thumbnails(shown, duration); });
            const auto frames = step("preview", [&] { return play(shown, duration); });
            m_line += "\t" + std::to_string(images) + " images\t" + std::to_string(frames) + " frames";
        }
        step("threads", [this] { return waitForThreads(); });
        if (shown != file)
            std::filesystem::remove(shown);
        std::printf("%s\tpeak %.0f\n", m_line.c_str(), m_watchdog.takePeak());
        std::fflush(stdout);
    }

private:
    template <typename Work>
    std::invoke_result_t<Work> step(const char* name, Work work)
    {
        m_watchdog.begin(name);
        const auto before = std::chrono::steady_clock::now();
        auto result = work();
        char text[40];
        std::snprintf(text, sizeof text, "\t%s %.2f", name,
                      milliseconds(std::chrono::steady_clock::now() - before) / 1000);
        m_line += text;
        m_watchdog.begin("between");
        return result;
    }

    /// The file to be played; empty where there is none.
    std::filesystem::path preview(const std::filesystem::path& file)
    {
        if (m_stills->isPlayable(file, {}))
            return file;
        m_watchdog.begin("copy");
        try {
            m_line += "\tcopied";
            return runToEnd(MediaPipeline::createPreview(file));
        } catch (const std::exception& error) {
            std::string text = error.what();
            std::replace(text.begin(), text.end(), '\n', ' ');
            std::replace(text.begin(), text.end(), '\t', ' ');
            m_line += " failed: " + text.substr(0, 200);
            return {};
        }
    }

    std::size_t thumbnails(const std::filesystem::path& file, double duration)
    {
        return runToEnd(MediaPipeline::timelineThumbnails(file, duration, 12, m_stills)).size();
    }

    static std::size_t play(const std::filesystem::path& file, double duration)
    {
        const double end = std::max(duration, 0.25);
        const PreviewedClip clip(file, 0, end, 320, 180);
        clip.player->play();
        std::size_t frames = 0;
        const auto show = [&](std::size_t count, std::chrono::milliseconds limit) {
            eventually(
                [&] {
                    return clip.output->waitFor([&](const auto& shown) { return shown.size() >= count; }, 0s);
                },
                limit);
            frames += clip.output->take().size();
        };
        show(8, 700ms);
        for (double position : {0.7, 0.1, 0.95}) {
            clip.seek(position * end);
            show(1, 200ms);
        }
        clip.player->pause();
        clip.seek(end / 2);
        show(1, 200ms);
        return frames;
    }

    /// Waits for the threads of the player to end. GLib keeps some of its own for a while.
    bool waitForThreads() const
    {
        return eventually([this] {
            return threadCount() - static_cast<int>(g_thread_pool_get_num_unused_threads()) <= m_threads;
        });
    }

    std::shared_ptr<GStreamerStills> m_stills = std::make_shared<GStreamerStills>();
    Watchdog m_watchdog{10s, 1024};
    int m_threads = threadCount();
    std::string m_line;
};

int run(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    OpeningClips clips;
    double duration = 0;
    std::string name;
    while (std::cin >> duration && std::getline(std::cin.ignore(), name))
        clips.open(name, duration);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    endProcess(run(argc, argv));
}
