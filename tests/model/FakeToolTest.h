#pragma once

#include "framing/ExportCommandBuilder.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/ScopedWorkingDirectory.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace stackreel
{

/// A request to export all 20 seconds of a landscape clip.
ExportRequest landscapeRequest(const std::filesystem::path& input, const std::filesystem::path& output);

/// The report of `ffprobe` on an export that is right.
extern const char* const exportReport;

/// A fixture with its own working directory, where a test installs a fake `ffmpeg`, and its own folder for
/// temporary files. For programs without a resource directory, which would be searched first.
class FakeToolTest : public testing::Test
{
protected:
    FakeToolTest();
    void TearDown() override;

    /// Installs a shell script as `ffmpeg`. It first writes its arguments to a file; `$destination` is the
    /// last. Also installs an `ffprobe` that reports any file as a right export, unless there is one.
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
