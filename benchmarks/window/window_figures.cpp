// Measures the program's own window from inside. The first word of the arguments is one of:
//
//   start MICROSECONDS    prints the milliseconds from that time (since the epoch) to the first painted frame
//
//   drag CLIP SECONDS     prints paint intervals and event times during a drag over a looping preview
//
//   idle CLIP SECONDS     prints the processor time with the preview paused
//
//   loop CLIP SECONDS     prints processor time and memory while the preview loops

#include "app/SceneGraph.h"
#include "app/StackreelApp.h"
#include "benchmarks/window/FirstFrame.h"
#include "desktop/panels/OpenPanel.h"
#include "desktop/panels/SavePanel.h"
#include "player/GStreamerPlayer.h"
#include "player/GStreamerStills.h"
#include "updates/StandardUpdateServices.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QQuickItem>
#include <QTimer>

#include <sys/resource.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <mutex>
#include <numbers>
#include <string>
#include <vector>

namespace
{

using namespace stackreel;

/// A panel that chooses its file at once.
class ChoosingOpenPanel : public OpenPanel
{
public:
    explicit ChoosingOpenPanel(std::filesystem::path file) : m_file(std::move(file)) {}
    void begin(const OpenPanelRequest&, PanelCompletion completion) override
    {
        completion({.accepted = true, .url = m_file});
    }

private:
    std::filesystem::path m_file;
};

/// A panel that is cancelled at once.
class CancellingSavePanel : public SavePanel
{
public:
    void begin(const SavePanelRequest&, PanelCompletion completion) override { completion({}); }
};

void wait(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

void load(StackreelApp& app)
{
    app.model().chooseSource();
    while (app.model().phase().kind() == Phase::Kind::empty ||
           app.model().phase().kind() == Phase::Kind::preparing)
        wait(10);
    // Wait for the thumbnails as well.
    for (int turn = 0; turn < 500 && app.model().timelineThumbnails().empty(); ++turn)
        wait(10);
    wait(1000);
}

double processorMilliseconds()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    const auto of = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1000 + static_cast<double>(time.tv_usec) / 1000;
    };
    return of(usage.ru_utime) + of(usage.ru_stime);
}

double peakMebibytes()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

double quantile(std::vector<double> values, double share)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[std::min(static_cast<std::size_t>(share * static_cast<double>(values.size())),
                           values.size() - 1)];
}

/// Records when the window painted. The scene graph may paint on another thread.
class PaintRecorder
{
public:
    explicit PaintRecorder(QQuickWindow& window)
    {
        m_clock.start();
        QObject::connect(
            &window, &QQuickWindow::frameSwapped, &window,
            [this] {
                const std::lock_guard guard(m_mutex);
                m_times.push_back(static_cast<double>(m_clock.nsecsElapsed()) / 1e6);
            },
            Qt::DirectConnection);
    }

    /// The milliseconds between consecutive paints since the last call.
    std::vector<double> takeIntervals()
    {
        const std::lock_guard guard(m_mutex);
        std::vector<double> intervals;
        for (std::size_t index = 1; index < m_times.size(); ++index)
            intervals.push_back(m_times[index] - m_times[index - 1]);
        m_times.clear();
        return intervals;
    }

private:
    QElapsedTimer m_clock;
    std::mutex m_mutex;
    std::vector<double> m_times;
};

/// Sends one pointer event to the window, and returns how many milliseconds that took.
double sendPointerEvent(QQuickWindow& window, QEvent::Type type, QPointF at)
{
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, at, window.mapToGlobal(at), button, held, Qt::NoModifier);
    QElapsedTimer clock;
    clock.start();
    QCoreApplication::sendEvent(&window, &event);
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

void drag(StackreelApp& app, int seconds)
{
    QQuickWindow& window = app.window();
    const auto* crop = window.findChild<QQuickItem*>(QStringLiteral("topCrop"));
    const auto* body = crop->findChild<QQuickItem*>(QStringLiteral("body"));
    const QPointF centre = body->mapToScene(body->boundingRect().center());
    PaintRecorder paints(window);
    std::vector<double> handling;
    sendPointerEvent(window, QEvent::MouseButtonPress, centre);
    QTimer pointer;
    pointer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&pointer, &QTimer::timeout, &window, [&] {
        const double angle = 2 * std::numbers::pi * static_cast<double>(handling.size()) / 125;
        handling.push_back(sendPointerEvent(window, QEvent::MouseMove,
                                            centre + QPointF(60 * std::sin(angle), 60 * std::cos(angle))));
    });
    pointer.start(8);
    wait(500);
    paints.takeIntervals();
    wait(seconds * 1000);
    const std::vector<double> intervals = paints.takeIntervals();
    pointer.stop();
    sendPointerEvent(window, QEvent::MouseButtonRelease, centre);
    // At 60 frames a second the interval is 16.7 ms. An interval that is half as long again counts as late.
    const auto late = std::count_if(intervals.begin(), intervals.end(), [](double ms) { return ms > 25; });
    std::printf("painted %.1f a second, late %.2f %%, longest %.1f ms\n",
                static_cast<double>(intervals.size()) / seconds,
                100.0 * static_cast<double>(late) / static_cast<double>(intervals.size()),
                quantile(intervals, 1));
    std::printf("drag event: median %.2f ms, 99th percentile %.2f ms, longest %.2f ms, %zu events\n",
                quantile(handling, 0.5), quantile(handling, 0.99), quantile(handling, 1), handling.size());
}

void reportUsage(int seconds)
{
    const double before = processorMilliseconds();
    wait(seconds * 1000);
    std::printf("processor %.1f ms a second, peak memory %.1f MiB\n",
                (processorMilliseconds() - before) / seconds, peakMebibytes());
}

} // namespace

int main(int argc, char* argv[])
{
    const std::string mode = argc > 2 ? argv[1] : "";
    if (mode.empty() || (mode != "start" && argc != 4))
        return EXIT_FAILURE;
    QApplication application(argc, argv);
    chooseSceneGraph();
    StackreelApp app(ModelServices::system([] { return std::make_shared<GStreamerPlayer>(); },
                                           std::make_shared<GStreamerStills>(),
                                           std::make_shared<ChoosingOpenPanel>(argv[2]),
                                           std::make_shared<CancellingSavePanel>()),
                     {}, standardUpdateServices());
    if (mode == "start")
        reportFirstFrame(app.window(), argv[2]);
    app.show();
    if (mode == "start")
        return QApplication::exec();
    load(app);
    if (app.model().phase().kind() != Phase::Kind::ready)
        return EXIT_FAILURE;
    const int seconds = std::atoi(argv[3]);
    if (mode == "drag") {
        drag(app, seconds);
    } else {
        if (mode == "idle")
            app.model().togglePreviewPlayback();
        wait(1000);
        reportUsage(seconds);
    }
    app.shutDown();
    std::fflush(nullptr);
    std::quick_exit(EXIT_SUCCESS);
}
