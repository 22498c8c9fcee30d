#pragma once

#include <QQmlApplicationEngine>
#include <QQuickWindow>

namespace stackreel
{

class WindowActions;
class WindowModel;

/// The main window, loaded from QML; hidden until `show`. `model` and `actions` must outlive it. Main thread.
class MainWindow
{
public:
    /// Throws `std::runtime_error` when the QML cannot be loaded, which only a broken installation causes.
    MainWindow(WindowModel& model, WindowActions& actions);

    QQuickWindow& window() const { return *m_window; }
    /// Shows the window at its initial size: 1180 × 780 points of content below the title bar, or less on a
    /// smaller screen.
    void show();

private:
    QQmlApplicationEngine m_engine;
    QQuickWindow* m_window = nullptr; ///< owned by the engine
};

} // namespace stackreel
