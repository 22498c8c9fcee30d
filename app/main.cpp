#include "app/ApplicationId.h"
#include "app/DarkPalette.h"
#include "app/SceneGraph.h"
#include "app/StackreelApp.h"
#include "desktop/panels/qt/FileOpenPanel.h"
#include "desktop/panels/qt/FileSavePanel.h"
#include "media/PreviewCopies.h"
#include "media/ScratchDirectory.h"
#include "player/GStreamerPlayer.h"
#include "player/GStreamerStills.h"
#include "system/Bundle.h"
#include "system/CleanupProcess.h"
#include "system/StandardStreams.h"
#include "system/StartThread.h"
#include "system/TerminationSignals.h"
#include "system/Version.h"
#include "updates/StandardUpdateServices.h"

#include <QApplication>
#include <QIcon>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <string>

namespace
{

using namespace stackreel;

/// Suppresses Qt's warning about a locale that is not UTF-8. The program does not depend on the locale.
void ignoreMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

std::unique_ptr<QApplication> makeApplication(int& argc, char** argv)
{
    // With XInput 2, Qt 6.4 misses the button release that ends a window move by the window manager, and the
    // next move starts with a jump.
    const bool disablesXInput2 = qEnvironmentVariableIsEmpty("QT_XCB_NO_XI2");
    if (disablesXInput2)
        qputenv("QT_XCB_NO_XI2", "1");
    const QtMessageHandler previous = qInstallMessageHandler(ignoreMessage);
    auto application = std::make_unique<QApplication>(argc, argv);
    qInstallMessageHandler(previous);
    if (disablesXInput2)
        qunsetenv("QT_XCB_NO_XI2"); // children must not inherit it
    QApplication::setApplicationName(QStringLiteral("Stackreel"));
    QApplication::setApplicationVersion(QString::fromLatin1(buildVersion()));
    QGuiApplication::setDesktopFileName(QString::fromLatin1(applicationId));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/qt/qml/Stackreel/icons/stackreel.svg")));
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setPalette(darkPalette());
    return application;
}

ModelServices services()
{
    const auto folders = std::make_shared<PanelFolders>(PanelFolders::standardFile());
    return ModelServices::system(
        [] { return std::make_shared<GStreamerPlayer>(); }, std::make_shared<GStreamerStills>(),
        std::make_shared<FileOpenPanel>(folders), std::make_shared<FileSavePanel>(folders));
}

/// Qt calls `exit` when the connection to the display breaks. This handler then skips the destructors of the
/// static objects that exist already. One of them (`DetachedThreads`) would wait for player threads that are
/// still running. Destructors registered later still run. `CleanupProcess` removes the files.
void skipDestructorsAtExit()
{
    std::atexit([] { std::_Exit(EXIT_FAILURE); });
}

/// Removes what earlier runs have left in the temporary directory, on a thread of its own, because the disk
/// may be slow. The program does not wait for it.
void removeEarlierTemporaryFiles()
{
    try {
        startThread([] {
            PreviewCopies::removeUnused();
            ScratchDirectory::removeUnused();
        }).detach();
    } catch (const std::exception&) {
        // The next start tries again.
    }
}

int run(int& argc, char** argv)
{
    const TerminationSignals signals;
    const auto application = makeApplication(argc, argv);
    chooseSceneGraph();
    StackreelApp app(services(), Bundle::infoDictionary(), standardUpdateServices());
    app.show();
    skipDestructorsAtExit();
    removeEarlierTemporaryFiles();
    const auto exit = [] { QCoreApplication::exit(); };
    const std::stop_callback quitOnSignal(signals.stopToken(), [&] {
        QMetaObject::invokeMethod(application.get(), exit, Qt::QueuedConnection);
    });
    const int status = QApplication::exec();
    app.shutDown();
    // Disconnect Qt's clean-up: it would wait in the application's destructor for a pending host name lookup,
    // which cannot be aborted.
    QObject::disconnect(application.get(), &QObject::destroyed, nullptr, nullptr);
    return status;
}

} // namespace

int main(int argc, char* argv[])
{
    StandardStreams::prepare();
    CleanupProcess::start();
    int status = EXIT_FAILURE;
    try {
        status = run(argc, argv);
    } catch (const std::exception& error) {
        StandardStreams::writeError(std::string(error.what()) + "\n");
    }
    // Do not run the destructors of static objects: a thread may still be reading a clip for thumbnails.
    std::fflush(nullptr);
    std::quick_exit(status);
}
