// minimal_window MICROSECONDS: a minimal Qt Quick window as large as the program's. Prints the milliseconds
// from the given time (since the epoch) to its first painted frame.

#include "benchmarks/window/FirstFrame.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>

int main(int argc, char* argv[])
{
    if (argc != 2)
        return EXIT_FAILURE;
    QGuiApplication application(argc, argv);
    QQmlApplicationEngine engine;
    engine.loadData("import QtQuick\n"
                    "Window { width: 1180; height: 780; visible: true; Text { text: 'Stackreel' } }");
    stackreel::reportFirstFrame(*qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst()), argv[1]);
    return QGuiApplication::exec();
}
