/// Moves the playhead of a paused player back and forth, 60 requests a second for 3 seconds, as a drag does.
/// Prints how long after the last request its frame was shown, how long a single such seek takes, how long
/// the longest call blocked the main thread, and the longest delay of the event loop.
///
/// scrubbing FILE DURATION WIDTH HEIGHT

#include "benchmarks/player/Measuring.h"
#include "benchmarks/player/PreviewedClip.h"

#include <QCoreApplication>
#include <QTimer>

#include <cmath>
#include <cstdio>
#include <cstdlib>

using namespace stackreel;

namespace
{

constexpr int requests = 180;
constexpr std::chrono::milliseconds interval(16);

class Drag
{
public:
    Drag(const PreviewedClip& clip, double duration) : m_clip(clip), m_duration(duration) {}

    /// The position of the playhead for a request: it moves from the middle to both ends and back.
    double positionAt(int request) const
    {
        return m_duration * (0.5 + 0.45 * std::sin(request * 6.283 / 90));
    }
    void step()
    {
        const auto before = std::chrono::steady_clock::now();
        if (m_request > 0)
            m_longestGap = std::max(m_longestGap, milliseconds(before - m_last) - milliseconds(interval));
        m_last = before;
        m_clip.seek(positionAt(m_request++));
        m_longestCall = std::max(m_longestCall, milliseconds(std::chrono::steady_clock::now() - before));
        if (m_request == requests)
            QCoreApplication::quit();
    }
    double longestCall() const { return m_longestCall; }
    double longestGap() const { return m_longestGap; }
    std::chrono::steady_clock::time_point last() const { return m_last; }

private:
    const PreviewedClip& m_clip;
    double m_duration;
    int m_request = 0;
    double m_longestCall = 0;
    double m_longestGap = 0;
    std::chrono::steady_clock::time_point m_last;
};

/// The moment at which the frame at this time was shown; the clock's epoch if it was not shown.
std::chrono::steady_clock::time_point shownAt(const PreviewedClip& clip, double seconds)
{
    std::chrono::steady_clock::time_point at = {};
    clip.output->waitFor(
        [&](const auto& shown) {
            if (shown.empty() || std::abs(shown.back().seconds + 0.02 - seconds) > 0.04)
                return false;
            at = shown.back().at;
            return true;
        },
        std::chrono::minutes(1));
    return at;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 5) {
        std::fprintf(stderr, "scrubbing FILE DURATION WIDTH HEIGHT\n");
        return 2;
    }
    const double duration = std::atof(argv[2]);
    const PreviewedClip clip(argv[1], 0, duration, std::atoi(argv[3]), std::atoi(argv[4]));
    clip.output->waitFor([](const auto& shown) { return !shown.empty(); }, std::chrono::minutes(1));
    Drag drag(clip, duration);
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, [&drag] { drag.step(); });
    timer.start(interval);
    application.exec();
    const double last = drag.positionAt(requests - 1);
    const double release = milliseconds(shownAt(clip, last) - drag.last());
    const std::size_t shown = clip.output->take().size();
    clip.seek(0);
    shownAt(clip, 0);
    clip.output->take();
    const auto before = std::chrono::steady_clock::now();
    clip.seek(last);
    const double alone = milliseconds(shownAt(clip, last) - before);
    std::printf("release=%.1f alone=%.1f call=%.2f gap=%.1f shown=%zu peak=%.0f\n", release, alone,
                drag.longestCall(), drag.longestGap(), shown, peakMemory());
}
