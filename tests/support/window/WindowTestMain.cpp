#include <QApplication>

#include <gtest/gtest.h>

#include <stdlib.h>

namespace
{

/// Whatever the toolkit complains of is a defect of the window: a binding loop, a missing property, a lost
/// type.
void failOnWarning(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    // What the platform without a screen cannot do is none.
    if (message.startsWith(QLatin1String("This plugin does not support")))
        return;
    if (type == QtWarningMsg || type == QtCriticalMsg)
        ADD_FAILURE() << "the toolkit warned: " << message.toStdString();
    else
        fprintf(stderr, "%s\n", qPrintable(message));
}

} // namespace

/// The tests of windows run without a screen and without a graphics processor, whatever the machine has.
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
