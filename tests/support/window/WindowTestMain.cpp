#include "tests/support/ProcessEnd.h"

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

/// Window tests run on the offscreen platform and the software scene graph, on any machine.
int runTests(int count, char** words)
{
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    ::setenv("QT_QUICK_BACKEND", "software", 0);
    ::setenv("RC_PARAMS", "max_success=1000", 0);
    testing::InitGoogleTest(&count, words);
    // The build lists the tests without the suppressions that the sanitizers need for an application.
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();
    const QApplication application(count, words);
    qInstallMessageHandler(failOnWarning);
    return RUN_ALL_TESTS();
}

} // namespace

int main(int count, char** words)
{
    stackreel::endProcess(runTests(count, words));
}
