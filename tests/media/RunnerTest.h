#pragma once

#include "media/ProcessOutput.h"
#include "tests/support/Awaited.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <set>
#include <stop_token>
#include <string>
#include <vector>

namespace stackreel
{

/// Runs the test child with a temporary folder of its own, and finds out after each test whether anything was
/// left: a scratch folder, a child, a descriptor.
class RunnerTest : public testing::Test
{
protected:
    RunnerTest();
    void TearDown() override;

    /// A run of the test child through `ProcessRunner`.
    static QCoro::Task<ProcessOutput> run(std::vector<std::string> arguments, std::stop_token stop = {});

    /// Starts a child that stays until it is told to end; returns when it runs.
    Awaited<ProcessOutput> startPatientChild(std::stop_token stop, std::vector<std::string> more = {});
    /// Ends that child with status 0.
    void endPatientChild() const;
    /// How many terminate requests that child has got.
    std::string terminateRequests() const { return contentOf(m_directory / "pid.requests"); }
    /// Whether the program that starts by making this file has been started.
    bool isMarked() const { return std::filesystem::exists(marker()); }
    std::filesystem::path marker() const { return m_directory / "marker"; }

    /// The names of what is in the temporary folder now.
    std::vector<std::string> scratchNames() const;

    TemporaryDirectory m_directory;
    TemporaryDirectory m_scratch;

private:
    ScopedEnvironment m_temporary;
    std::set<int> m_descriptors;
};

} // namespace stackreel
