#include "tests/media/RunnerTest.h"

#include "media/ProcessRunner.h"
#include "tests/support/ChildReport.h"
#include "tests/support/Descriptors.h"

#include <signal.h>

namespace stackreel
{

RunnerTest::RunnerTest() : m_temporary("TMPDIR", m_scratch.path()), m_descriptors(openDescriptors()) {}

void RunnerTest::TearDown()
{
    EXPECT_EQ(scratchNames(), std::vector<std::string>());
    EXPECT_FALSE(hasChildren());
    EXPECT_EQ(openDescriptors(), m_descriptors);
}

QCoro::Task<ProcessOutput> RunnerTest::run(std::vector<std::string> arguments, std::stop_token stop)
{
    return ProcessRunner::run(testChild(), std::move(arguments), std::move(stop));
}

Awaited<ProcessOutput> RunnerTest::startPatientChild(std::stop_token stop, std::vector<std::string> more)
{
    std::vector<std::string> arguments = {"patient", m_directory / "pid"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    Awaited<ProcessOutput> running(run(std::move(arguments), std::move(stop)));
    EXPECT_TRUE(eventually([this] { return std::filesystem::exists(m_directory / "pid"); }));
    return running;
}

void RunnerTest::endPatientChild() const
{
    ::kill(std::stoi(contentOf(m_directory / "pid")), SIGUSR1);
}

std::vector<std::string> RunnerTest::scratchNames() const
{
    return m_scratch.names();
}

} // namespace stackreel
