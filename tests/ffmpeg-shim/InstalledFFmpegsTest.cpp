#include "tests/ffmpeg-shim/InstalledFFmpegs.h"

#include "tests/support/ScopedEnvironment.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace stackreel::shim
{

namespace
{

TEST(InstalledFFmpegsTest, IncludesTheSystemsWithoutRootsOfOtherReleases)
{
    const TemporaryDirectory roots;
    const ScopedEnvironment chosen("STACKREEL_ROOTS", roots.path().string());
    EXPECT_EQ(InstalledFFmpegs().all().size(), 1U);
}

TEST(InstalledFFmpegsTest, IncludesThatOfEachRoot)
{
    const TemporaryDirectory roots;
    const ScopedEnvironment chosen("STACKREEL_ROOTS", roots.path().string());
    roots.writeExecutable("sid/usr/bin/ffmpeg", "#!/bin/sh\necho ffmpeg version 1 Copyright\n");
    const InstalledFFmpegs found;
    ASSERT_EQ(found.all().size(), 2U);
    EXPECT_EQ(found.all()[1].version, "ffmpeg version 1");
}

TEST(InstalledFFmpegsTest, ThrowsWhenThatOfARootDoesNotRun)
{
    const TemporaryDirectory roots;
    const ScopedEnvironment chosen("STACKREEL_ROOTS", roots.path().string());
    roots.writeExecutable("sid/usr/bin/ffmpeg", "#!/bin/sh\nexit 1\n");
    EXPECT_THROW(InstalledFFmpegs(), std::runtime_error);
}

} // namespace

} // namespace stackreel::shim
