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

/// Has its own working directory, in which `ffmpeg` is what a test makes of it, and its own folder for
/// temporary files. For programs without a resource directory, which would be looked at first.
class FakeToolTest : public testing::Test
{
protected:
    FakeToolTest();
    void TearDown() override;

    /// Makes `ffmpeg` a shell script that first notes its arguments in a file; `$destination` is the last.
    void installTool(const std::string& script) const;
    /// Makes it one that writes half a file and stays until it is asked to end.
    void installPatientTool() const;
    /// The arguments of the last run; none when there was none.
    std::vector<std::string> arguments() const;
    bool hasRun() const { return std::filesystem::exists(m_directory / "arguments"); }
    /// Whether the patient tool has come as far as to wait.
    bool isWaiting() const { return std::filesystem::exists(m_directory / "pid"); }

    TemporaryDirectory m_directory;
    TemporaryDirectory m_temporary;

private:
    ScopedWorkingDirectory m_working;
    ScopedEnvironment m_temporaryPlace;
};

} // namespace stackreel
