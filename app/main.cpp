#include "app/ApplicationId.h"
#include "app/DarkPalette.h"
#include "app/SceneGraph.h"
#include "app/StackreelApp.h"
#include "platform/Bundle.h"
#include "platform/StandardStreams.h"
#include "platform/TerminationSignals.h"
#include "platform/Version.h"
#include "platform/gstreamer/GstAssetLoader.h"
#include "platform/gstreamer/GstPlayback.h"
#include "platform/panels/qt/FileOpenPanel.h"
#include "platform/panels/qt/FileSavePanel.h"
#include "platform/updates/StandardUpdateServices.h"

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

/// Keeps Qt from complaining about a locale that is not UTF-8, which matters nowhere in this program.
void ignoreMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

std::unique_ptr<QApplication> makeApplication(int& argc, char** argv)
{
    // With X11's newer input events, Qt 6.4 misses the release that ends a move of the window by the desktop,
    // and the next move begins with a jump.
    const bool decidesOnEvents = qEnvironmentVariableIsEmpty("QT_XCB_NO_XI2");
    if (decidesOnEvents)
        qputenv("QT_XCB_NO_XI2", "1");
    const QtMessageHandler previous = qInstallMessageHandler(ignoreMessage);
    auto application = std::make_unique<QApplication>(argc, argv);
    qInstallMessageHandler(previous);
    if (decidesOnEvents)
        qunsetenv("QT_XCB_NO_XI2"); // no business of the children
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
    const auto folders = std::make_shared<PanelFolders>();
    return ModelServices::system(std::make_shared<GstPlayback>(), std::make_shared<GstAssetLoader>(),
                                 std::make_shared<FileOpenPanel>(folders),
                                 std::make_shared<FileSavePanel>(folders));
}

int run(int& argc, char** argv, TerminationSignals& signals)
{
    const auto application = makeApplication(argc, argv);
    chooseSceneGraph();
    StackreelApp app(services(), Bundle::infoDictionary(), standardUpdateServices());
    app.show();
    const std::stop_callback leave(signals.stopToken(), [&] {
        QMetaObject::invokeMethod(
            application.get(), [] { QCoreApplication::exit(); }, Qt::QueuedConnection);
    });
    const int status = QApplication::exec();
    app.shutDown();
    // A look-up of a name cannot be given up, and the toolkit would wait for it at the end of its
    // application.
    QObject::disconnect(application.get(), &QObject::destroyed, nullptr, nullptr);
    return status;
}

} // namespace

int main(int argc, char* argv[])
{
    StandardStreams::prepare();
    TerminationSignals signals;
    int status = EXIT_FAILURE;
    try {
        status = run(argc, argv, signals);
    } catch (const std::exception& error) {
        StandardStreams::writeError(std::string(error.what()) + "\n");
    }
    // Without the destructors of static objects: a thread may still be reading a clip for its thumbnails.
    std::fflush(nullptr);
    std::quick_exit(status);
}
