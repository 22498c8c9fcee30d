/// Seeks a paused player to each of the given times, and prints how long it takes until the frame is shown.
///
/// exact_seeks FILE DURATION WIDTH HEIGHT TIME…      (seconds)

#include "benchmarks/player/Measuring.h"
#include "benchmarks/player/PreviewedClip.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

using namespace stackreel;

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    if (argc < 6) {
        std::fprintf(stderr, "exact_seeks FILE DURATION WIDTH HEIGHT TIME…\n");
        return 2;
    }
    const PreviewedClip clip(argv[1], 0, std::atof(argv[2]), std::atoi(argv[3]), std::atoi(argv[4]));
    const auto shows = [&] {
        return clip.output->waitFor([](const auto& shown) { return !shown.empty(); },
                                    std::chrono::minutes(1));
    };
    if (!shows())
        return 1;
    std::vector<double> took;
    for (int i = 5; i < argc; ++i) {
        clip.output->take();
        const auto before = std::chrono::steady_clock::now();
        clip.seek(std::atof(argv[i]));
        if (!shows())
            return 1;
        took.push_back(milliseconds(clip.output->take().front().at - before));
    }
    std::printf("seeks=%zu median=%.1f worst=%.1f peak=%.0f\n", took.size(), median(took),
                *std::max_element(took.begin(), took.end()), peakMemory());
}
