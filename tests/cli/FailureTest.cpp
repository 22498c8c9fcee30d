#include "cli/Failure.h"

#include "cli/CliError.h"
#include "cli/UsageError.h"
#include "media/CancellationError.h"
#include "media/MediaToolError.h"
#include "media/ProbeDocument.h"
#include "model/ExportError.h"
#include "system/SystemError.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace stackreel
{

namespace
{

template <typename Error>
Failure failureOf(const Error& error)
{
    return Failure::of(std::make_exception_ptr(error));
}

TEST(Failure, HasACodeForEachKindOfError)
{
    EXPECT_EQ(failureOf(CancellationError()).code, "cancelled");
    EXPECT_EQ(failureOf(CliError("No.")).code, "refused");
    EXPECT_EQ(failureOf(ExportError("No.")).code, "export");
    EXPECT_EQ(failureOf(DecodingError("No.")).code, "unreadable-source");
    EXPECT_EQ(failureOf(SystemError(ENOSPC, "write")).code, "system");
    EXPECT_EQ(failureOf(std::runtime_error("No.")).code, "other");
    EXPECT_EQ(failureOf(MediaToolError::toolMissing("ffmpeg")).code, "tool-missing");
    EXPECT_EQ(failureOf(MediaToolError::processFailed("FFmpeg", 1, "")).code, "tool-failed");
    EXPECT_EQ(failureOf(MediaToolError::invalidProbe()).code, "unreadable-source");
    EXPECT_EQ(failureOf(MediaToolError::noVideo()).code, "no-video");
    EXPECT_EQ(failureOf(MediaToolError::verticalSource()).code, "vertical-source");
    EXPECT_EQ(failureOf(MediaToolError::cancelled()).code, "cancelled");
}

TEST(Failure, OfWrongUsageHasStatusTwoAndAHint)
{
    const Failure failure = failureOf(UsageError("No.", "export"));
    EXPECT_EQ(failure.status, 2);
    EXPECT_EQ(failure.code, "usage");
    EXPECT_EQ(failure.text(), "No.\nTry 'stackreel-cli export --help'.");
}

TEST(Failure, OfAToolHasItsLinesAfterTheSentence)
{
    const Failure failure = failureOf(MediaToolError::processFailed("FFmpeg", 1, "one\ntwo"));
    EXPECT_EQ(failure.status, 1);
    EXPECT_EQ(failure.toolLines, "one\ntwo");
    EXPECT_EQ(failure.text(), failure.sentence + "\none\ntwo");
}

} // namespace

} // namespace stackreel
