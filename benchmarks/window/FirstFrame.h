#pragma once

#include <QCoreApplication>
#include <QQuickWindow>

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace stackreel
{

/// Prints the milliseconds from `begun` (microseconds since the epoch, as text) to the window's first painted
/// frame, and then leaves the event loop.
inline void reportFirstFrame(QQuickWindow& window, const char* begun)
{
    const long long start = std::atoll(begun);
    QObject::connect(
        &window, &QQuickWindow::frameSwapped, &window,
        [start] {
            using namespace std::chrono;
            const auto now = duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
            std::printf("%.1f\n", static_cast<double>(now - start) / 1000);
            QCoreApplication::exit();
        },
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
}

} // namespace stackreel
