#include <QApplication>

#include <gtest/gtest.h>

#include <stdlib.h>

namespace
{

/// A warning of Qt fails the test, because it reports a defect of the window: a binding loop, a missing
/// property or type.
void failOnWarning(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    // The offscreen platform reports unsupported features, which are no defects.
    if (message.startsWith(QLatin1String("This plugin does not support")))
        return;
    if (type == QtWarningMsg || type == QtCriticalMsg)
        ADD_FAILURE() << "Qt warning: " << message.toStdString();
    else
        fprintf(stderr, "%s\n", qPrintable(message));
}

} // namespace

/// Window tests run on the offscreen platform and the software scene graph, on any machine.
int main(int count, char** words)
{
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    ::setenv("QT_QUICK_BACKEND", "software", 0);
    ::setenv("RC_PARAMS", "max_success=1000", 0);
    testing::InitGoogleTest(&count, words);
    const QApplication application(count, words);
    qInstallMessageHandler(failOnWarning);
    return RUN_ALL_TESTS();
}
