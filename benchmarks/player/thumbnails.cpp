/// Makes the timeline's twelve thumbnails of a file and prints how long that took.
///
/// thumbnails FILE DURATION

#include "benchmarks/player/Measuring.h"
#include "player/GStreamerStills.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

using namespace stackreel;

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "thumbnails FILE DURATION\n");
        return 2;
    }
    constexpr int count = 12;
    StillRequest request{argv[1], {}, 320, 180, MediaTime::fromSeconds(0.5)};
    for (int i = 0; i < count; ++i)
        request.times.push_back(MediaTime::fromSeconds((i + 0.5) / count * std::atof(argv[2])));
    const auto before = std::chrono::steady_clock::now();
    int made = 0;
    double furthest = 0;
    GStreamerStills().take(request, {}, [&](const Still& still) {
        made += still.frame.pixels != nullptr;
        furthest = std::max(furthest, std::abs(still.frame.seconds - still.requestedTime.seconds()));
    });
    std::printf("images=%d took=%.0f furthest=%.3f peak=%.0f\n", made,
                milliseconds(std::chrono::steady_clock::now() - before), furthest, peakMemory());
}
