#pragma once

#include <QQmlApplicationEngine>
#include <QQuickWindow>

namespace stackreel
{

class WindowActions;
class WindowModel;

/// The program's one window, loaded from QML. Made hidden. Both objects have to outlive it. Main thread.
class MainWindow
{
public:
    /// Throws `std::runtime_error` when the window cannot be made, which only a broken installation causes.
    MainWindow(WindowModel& model, WindowActions& actions);

    QQuickWindow& window() const { return *m_window; }
    /// Shows it at its first size: 1180 × 780 points, or less where the screen is smaller.
    void show();

private:
    QQmlApplicationEngine m_engine;
    QQuickWindow* m_window = nullptr; ///< the engine's
};

} // namespace stackreel
