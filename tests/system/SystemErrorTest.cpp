#include "system/SystemError.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace stackreel
{

TEST(SystemError, DescribesTheActionTheFileAndTheReason)
{
    const SystemError error(ENOSPC, "write", "/clips/Beach day.mp4");
    EXPECT_STREQ(error.what(), "Could not write “/clips/Beach day.mp4”: No space left on device.");
    EXPECT_EQ(error.code(), std::error_code(ENOSPC, std::system_category()));
}

TEST(SystemError, DescribesACallWithoutAFile)
{
    EXPECT_STREQ(SystemError(EAGAIN, "start a thread").what(),
                 "Could not start a thread: Resource temporarily unavailable.");
}

} // namespace stackreel
