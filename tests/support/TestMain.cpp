#include "tests/support/ProcessEnd.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <stdlib.h>
#include <sys/resource.h>

namespace
{

int runTests(int count, char** words)
{
    // Disable core dumps, because some tests make programs crash.
    const rlimit none = {};
    ::setrlimit(RLIMIT_CORE, &none);
    // RapidCheck tries more cases than by default, because each is fast. The environment can override it.
    ::setenv("RC_PARAMS", "max_success=1000", 0);
    testing::InitGoogleTest(&count, words);
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const QCoreApplication application(count, words);
    return RUN_ALL_TESTS();
}

} // namespace

int main(int count, char** words)
{
    stackreel::endProcess(runTests(count, words));
}
