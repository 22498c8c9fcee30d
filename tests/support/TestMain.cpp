#include "tests/support/ProcessEnd.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <stdlib.h>
#include <sys/resource.h>

namespace
{

int runTests(int count, char** words)
{
    // Some tests make programs crash. They should leave no core dumps.
    const rlimit none = {};
    ::setrlimit(RLIMIT_CORE, &none);
    // Properties are cheap to check, so more cases than the default are tried. The environment can override
    // it.
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
