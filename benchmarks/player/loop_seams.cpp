/// Plays a range of a file for a number of wraps. Prints how much longer each seam lasted than ideal; the
/// ideal is the end of the range minus the time of the last frame. A run has lost a frame if another run has
/// one more, or if FRAMES is higher.
///
/// loop_seams FILE START END WRAPS WIDTH HEIGHT FRAMES      (FRAMES: how many the range has; 0 when unknown)

#include "benchmarks/player/Measuring.h"
#include "benchmarks/player/PreviewedClip.h"

#include <QCoreApplication>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

using namespace stackreel;

namespace
{

using Shown = RecordingOutput::Shown;

std::size_t wrapsIn(const std::vector<Shown>& shown)
{
    std::size_t wraps = 0;
    for (std::size_t i = 1; i < shown.size(); ++i)
        wraps += shown[i].seconds < shown[i - 1].seconds;
    return wraps;
}

struct Seams {
    std::vector<double> errors; ///< how much longer than ideal each seam lasted, in ms
    double worstStep = 0;       ///< the largest error between two frames of a run
    std::size_t doubled = 0;
    std::vector<std::size_t> frames; ///< number of frames shown in each complete run
};

Seams seamsOf(const std::vector<Shown>& shown, double end)
{
    Seams seams;
    std::size_t frames = 1;
    for (std::size_t i = 1; i < shown.size(); ++i) {
        const double took = milliseconds(shown[i].at - shown[i - 1].at);
        if (shown[i].seconds < shown[i - 1].seconds) {
            seams.errors.push_back(took - 1000 * (end - shown[i - 1].seconds));
            seams.frames.push_back(frames);
            frames = 1;
            continue;
        }
        const double step = 1000 * (shown[i].seconds - shown[i - 1].seconds);
        seams.worstStep = std::max(seams.worstStep, std::abs(took - step));
        const bool again = step == 0;
        seams.doubled += again;
        frames += !again;
    }
    return seams;
}

void report(const Seams& seams, std::size_t expected)
{
    std::size_t lost = 0;
    const std::size_t whole = std::max(expected, *std::max_element(seams.frames.begin(), seams.frames.end()));
    for (std::size_t frames : seams.frames)
        lost += whole - frames;
    const auto good = std::count_if(seams.errors.begin(), seams.errors.end(),
                                    [](double error) { return std::abs(error) <= 3; });
    const auto [least, most] = std::minmax_element(seams.errors.begin(), seams.errors.end());
    std::printf("wraps=%zu median=%+.2f least=%+.2f most=%+.2f within=%.0f step=%.1f lost=%zu doubled=%zu "
                "peak=%.0f\n",
                seams.errors.size(), median(seams.errors), *least, *most,
                100.0 * static_cast<double>(good) / static_cast<double>(seams.errors.size()), seams.worstStep,
                lost, seams.doubled, peakMemory());
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 8) {
        std::fprintf(stderr, "loop_seams FILE START END WRAPS WIDTH HEIGHT FRAMES\n");
        return 2;
    }
    const double end = std::atof(argv[3]);
    const auto wraps = static_cast<std::size_t>(std::atoi(argv[4]));
    const PreviewedClip clip(argv[1], std::atof(argv[2]), end, std::atoi(argv[5]), std::atoi(argv[6]));
    // The first frame is shown before playback starts, as after loading a clip.
    clip.output->waitFor([](const auto& shown) { return !shown.empty(); }, std::chrono::minutes(1));
    clip.output->take();
    clip.player->play();
    clip.output->waitFor([&](const auto& shown) { return wrapsIn(shown) >= wraps; },
                         std::chrono::minutes(30));
    const auto shown = clip.output->take();
    if (wrapsIn(shown) == 0) {
        std::fprintf(stderr, "%s did not wrap\n", argv[1]);
        return 1;
    }
    Seams seams = seamsOf(shown, end);
    // The first frame of the first run was shown before the recording started, so the run counts as complete.
    seams.frames.front() = std::max(seams.frames.front(), static_cast<std::size_t>(std::atoi(argv[7])));
    report(seams, static_cast<std::size_t>(std::atoi(argv[7])));
}
