#pragma once

#include "tests/support/ScopedEnvironment.h"
#include "tests/support/ScopedWorkingDirectory.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace stackreel
{

/// A fixture with a working directory, in which a test installs a fake `ffmpeg`, and a folder for temporary
/// files. Only for test programs without a resource directory, because tools are looked for there first.
class FakeToolTest : public testing::Test
{
protected:
    FakeToolTest();
    void TearDown() override;

    /// Installs a shell script as `ffmpeg`, preceded by commands that write the arguments to a file. In the
    /// script, `$destination` is the last argument.
    void installTool(const std::string& script) const;
    /// Installs an `ffmpeg` that writes half a file and runs until it is asked to end.
    void installWaitingTool() const;
    /// The arguments of the last run; empty if there was no run.
    std::vector<std::string> arguments() const;
    bool hasRun() const { return std::filesystem::exists(m_directory / "arguments"); }
    /// Whether the tool of `installWaitingTool` has written half of its file and is waiting.
    bool isWaiting() const { return std::filesystem::exists(m_directory / "pid"); }

    TemporaryDirectory m_directory;
    TemporaryDirectory m_temporary;

private:
    ScopedWorkingDirectory m_working;
    ScopedEnvironment m_temporaryPlace;
};

} // namespace stackreel
