/// Loops a range, drags its end handle for a second, and releases it, as the model does. Prints the median
/// and the longest time from the release to the first frame that moves, and the longest time without a new
/// frame in the second after that.
///
/// trimming FILE START END NEW-END ROUNDS WIDTH HEIGHT

#include "benchmarks/player/Measuring.h"
#include "benchmarks/player/PreviewedClip.h"

#include <QCoreApplication>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <thread>

using namespace stackreel;

namespace
{

constexpr double frame = 1.0 / 30;
constexpr int steps = 60;

struct Trim {
    double start;
    double end;
    double newEnd;
};

MediaTimeRange rangeOf(double start, double end)
{
    return {MediaTime::fromSeconds(start), MediaTime::fromSeconds(end - start)};
}

/// Plays until the range has begun again, and drags the end handle.
void dragEnd(const PreviewedClip& clip, const Trim& trim)
{
    clip.player->play();
    clip.output->waitFor(
        [](const auto& shown) {
            return shown.size() > 1 && shown.back().seconds < shown[shown.size() - 2].seconds;
        },
        std::chrono::minutes(1));
    clip.player->pause();
    for (int step = 1; step <= steps; ++step) {
        clip.seek(trim.end + (trim.newEnd - trim.end) * step / steps - frame);
        std::this_thread::sleep_for(std::chrono::milliseconds(16));
    }
    const double last = trim.newEnd - frame;
    clip.output->waitFor(
        [last](const auto& shown) { return !shown.empty() && std::abs(shown.back().seconds - last) < frame; },
        std::chrono::minutes(1));
    clip.output->take();
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 8) {
        std::fprintf(stderr, "trimming FILE START END NEW-END ROUNDS WIDTH HEIGHT\n");
        return 2;
    }
    const Trim trim{std::atof(argv[2]), std::atof(argv[3]), std::atof(argv[4])};
    std::vector<double> motions;
    double stall = 0;
    for (int round = 0; round < std::atoi(argv[5]); ++round) {
        const PreviewedClip clip(argv[1], trim.start, trim.end, std::atoi(argv[6]), std::atoi(argv[7]));
        dragEnd(clip, trim);
        const auto released = std::chrono::steady_clock::now();
        clip.player->open(argv[1], rangeOf(trim.start, trim.newEnd));
        clip.seek(trim.newEnd - frame);
        clip.player->play();
        std::chrono::steady_clock::time_point moved;
        clip.output->waitFor(
            [&moved, &trim](const auto& shown) {
                for (std::size_t i = 1; i < shown.size(); ++i) {
                    moved = shown[i].at;
                    if (shown[i].seconds < trim.newEnd - 2 * frame && shown[i - 1].seconds < shown[i].seconds)
                        return true;
                }
                return false;
            },
            std::chrono::minutes(1));
        motions.push_back(milliseconds(moved - released));
        std::this_thread::sleep_for(std::chrono::seconds(1));
        const auto shown = clip.output->take();
        for (std::size_t i = 1; i < shown.size(); ++i)
            if (shown[i - 1].at >= moved)
                stall = std::max(stall, milliseconds(shown[i].at - shown[i - 1].at));
    }
    std::printf("median=%.1f worst=%.1f stall=%.1f peak=%.0f\n", median(motions),
                *std::max_element(motions.begin(), motions.end()), stall, peakMemory());
}
