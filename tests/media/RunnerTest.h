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

/// Runs the test child with a temporary folder of its own. Checks after each test that no scratch folder, no
/// child and no open descriptor is left.
class RunnerTest : public testing::Test
{
protected:
    RunnerTest();
    void TearDown() override;

    /// A run of the test child through `ProcessRunner`.
    static QCoro::Task<ProcessOutput> run(std::vector<std::string> arguments, std::stop_token stop = {});

    /// Starts a child that runs until `endPatientChild` is called. Returns when the child is running.
    Awaited<ProcessOutput> startPatientChild(std::stop_token stop, std::vector<std::string> more = {});
    /// Makes that child exit with status 0.
    void endPatientChild() const;
    /// The number of SIGTERMs that the child has received, as text.
    std::string terminateRequests() const { return contentOf(m_directory / "pid.requests"); }
    /// Whether the marker file exists. A child that was started creates it first.
    bool isMarked() const { return std::filesystem::exists(marker()); }
    std::filesystem::path marker() const { return m_directory / "marker"; }

    /// The names of the entries in the temporary folder.
    std::vector<std::string> scratchNames() const;

    TemporaryDirectory m_directory;
    TemporaryDirectory m_scratch;

private:
    ScopedEnvironment m_temporary;
    std::set<int> m_descriptors;
};

} // namespace stackreel
