#include <QCoreApplication>

#include <gtest/gtest.h>

#include <stdlib.h>
#include <sys/resource.h>

int main(int count, char** words)
{
    // Some tests have programs die; nobody wants to keep what they held.
    const rlimit none = {};
    ::setrlimit(RLIMIT_CORE, &none);
    // Properties are cheap to try here. Whoever runs the tests may wish otherwise.
    ::setenv("RC_PARAMS", "max_success=1000", 0);
    testing::InitGoogleTest(&count, words);
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const QCoreApplication application(count, words);
    return RUN_ALL_TESTS();
}
