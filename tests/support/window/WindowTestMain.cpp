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
    // The offscreen platform warns about features that it does not support. These warnings do not report
    // defects.
    if (message.startsWith(QLatin1String("This plugin does not support")))
        return;
    if (type == QtWarningMsg || type == QtCriticalMsg)
        ADD_FAILURE() << "Qt warning: " << message.toStdString();
    else
        fprintf(stderr, "%s\n", qPrintable(message));
}

/// Runs the tests on the offscreen platform and with the software scene graph, so that they run on any
/// machine.
int runTests(int count, char** words)
{
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    ::setenv("QT_QUICK_BACKEND", "software", 0);
    ::setenv("RC_PARAMS", "max_success=1000", 0);
    testing::InitGoogleTest(&count, words);
    // The build runs the program to list the tests. Do not create an application then, because the sanitizers
    // need suppressions for one, which the build does not set.
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
