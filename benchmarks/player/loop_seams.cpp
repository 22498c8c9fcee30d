/// Plays a range of a file for a number of wraps and tells how long the seams lasted, against the ideal: the
/// range's end minus the last frame's time.
///
/// loop_seams FILE START END WRAPS [WIDTH HEIGHT]

#include "benchmarks/player/RecordingOutput.h"
#include "platform/gstreamer/GstPlayback.h"
#include "platform/playback/PlayerItem.h"
#include "platform/playback/PlayerLooper.h"
#include "platform/playback/QueuePlayer.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>

using namespace stackreel;

namespace
{

std::size_t wrapsIn(const std::vector<RecordingOutput::Shown>& shown)
{
    std::size_t wraps = 0;
    for (std::size_t i = 1; i < shown.size(); ++i)
        wraps += shown[i].seconds <= shown[i - 1].seconds;
    return wraps;
}

double milliseconds(std::chrono::steady_clock::duration duration)
{
    return std::chrono::duration<double, std::milli>(duration).count();
}

void report(const std::vector<RecordingOutput::Shown>& shown, double end)
{
    std::vector<double> errors;
    std::vector<double> others;
    std::vector<std::set<double>> runs(1);
    for (std::size_t i = 1; i < shown.size(); ++i) {
        const double took = milliseconds(shown[i].at - shown[i - 1].at);
        if (shown[i].seconds <= shown[i - 1].seconds) {
            errors.push_back(took - 1000 * (end - shown[i - 1].seconds));
            runs.emplace_back();
        } else {
            others.push_back(std::abs(took - 1000 * (shown[i].seconds - shown[i - 1].seconds)));
        }
        runs.back().insert(shown[i].seconds);
    }
    // The first run lacks its first frame here, and the last one was cut short.
    std::size_t uneven = 0;
    for (std::size_t i = 2; i + 1 < runs.size(); ++i)
        uneven += runs[i] != runs[1];
    std::sort(errors.begin(), errors.end());
    std::sort(others.begin(), others.end());
    std::printf("wraps %zu, seam minus ideal: median %+.2f ms, least %+.2f, most %+.2f; within 3 ms %.0f %%; "
                "frames a run %zu, runs that differ %zu; other steps off by %.2f ms (median), %.2f (worst)\n",
                errors.size(), errors[errors.size() / 2], errors.front(), errors.back(),
                100.0 *
                    static_cast<double>(std::count_if(errors.begin(), errors.end(),
                                                      [](double error) { return std::abs(error) <= 3; })) /
                    static_cast<double>(errors.size()),
                runs.size() > 1 ? runs[1].size() : 0, uneven, others.empty() ? 0 : others[others.size() / 2],
                others.empty() ? 0 : others.back());
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (argc < 5) {
        std::fprintf(stderr, "loop_seams FILE START END WRAPS [WIDTH HEIGHT]\n");
        return 2;
    }
    const double start = std::atof(argv[2]);
    const double end = std::atof(argv[3]);
    const auto wraps = static_cast<std::size_t>(std::atoi(argv[4]));
    GstPlayback playback;
    const auto player = playback.makePlayer();
    const auto output = std::make_shared<RecordingOutput>();
    player->setMuted(true);
    player->setVideoOutput(output);
    player->setVideoSize(argc > 6 ? std::atoi(argv[5]) : 1100, argc > 6 ? std::atoi(argv[6]) : 620);
    const auto looper = playback.makeLooper(
        player, PlayerItem{argv[1]}, {MediaTime::fromSeconds(start), MediaTime::fromSeconds(end - start)});
    player->play();
    output->waitFor([&](const auto& shown) { return wrapsIn(shown) >= wraps; }, std::chrono::minutes(30));
    report(output->take(), end);
}
