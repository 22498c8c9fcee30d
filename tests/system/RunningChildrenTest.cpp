#include "system/RunningChildren.h"

#include "system/ChildProcess.h"
#include "system/Files.h"
#include "system/SystemError.h"
#include "tests/support/Awaited.h"
#include "tests/support/ChildReport.h"
#include "tests/support/ProcessEnd.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <csignal>

namespace stackreel
{

namespace
{

/// `RunningChildren::end` prevents further children in the whole process, so the tests that call it run in
/// processes of their own (death tests).
class RunningChildrenTest : public testing::Test
{
protected:
    std::shared_ptr<ChildProcess> launch(const std::vector<std::string>& arguments)
    {
        const WriteHandle output(m_directory.write("stdout", ""));
        const WriteHandle error(m_directory.write("stderr", ""));
        return ChildProcess::launch({.executable = testChild(),
                                     .arguments = arguments,
                                     .standardOutput = output.descriptor(),
                                     .standardError = error.descriptor()});
    }
    /// A child that ends when it receives SIGTERM for the `requests`-th time; if `requests` is empty, it
    /// ignores SIGTERM.
    std::shared_ptr<ChildProcess> launchPatient(const std::string& name, const std::string& requests = "")
    {
        const auto file = m_directory / name;
        std::vector<std::string> arguments = {"patient", file.string()};
        if (!requests.empty())
            arguments.push_back(requests);
        auto child = launch(arguments);
        EXPECT_TRUE(eventually([&] { return std::filesystem::exists(file); }));
        return child;
    }

    TemporaryDirectory m_directory;
};

using RunningChildrenDeathTest = RunningChildrenTest;

/// Exits with status 0 if all expectations so far were met, otherwise with 1.
[[noreturn]] void exitWithTestResult()
{
    endProcess(testing::Test::HasFailure() ? 1 : 0);
}

} // namespace

TEST_F(RunningChildrenTest, CountsChildrenUntilTheyAreReaped)
{
    EXPECT_EQ(RunningChildren::count(), 0U);
    auto child = launch({"exit", "0"});
    child->waitForExit();
    EXPECT_EQ(RunningChildren::count(), 1U);
    child.reset();
    EXPECT_EQ(RunningChildren::count(), 0U);
}

TEST_F(RunningChildrenDeathTest, EndAsksEveryChildToEnd)
{
    const auto ends = [this] {
        auto first = launchPatient("first", "1");
        auto second = launchPatient("second", "1");
        RunningChildren::end();
        first->waitForExit();
        second->waitForExit();
        first.reset();
        second.reset();
        EXPECT_EQ(RunningChildren::count(), 0U);
        exitWithTestResult();
    };
    EXPECT_EXIT(ends(), testing::ExitedWithCode(0), "");
}

TEST_F(RunningChildrenDeathTest, LaunchingFailsAfterEnd)
{
    const auto launchFails = [this] {
        RunningChildren::end();
        EXPECT_THROW(launch({"exit", "0"}), SystemError);
        EXPECT_EQ(RunningChildren::count(), 0U);
        exitWithTestResult();
    };
    EXPECT_EXIT(launchFails(), testing::ExitedWithCode(0), "");
}

TEST_F(RunningChildrenDeathTest, KillEndsAChildThatIgnoresSigterm)
{
    const auto kills = [this] {
        auto child = launchPatient("stubborn");
        RunningChildren::end();
        EXPECT_TRUE(eventually([&] { return std::filesystem::exists(m_directory / "stubborn.requests"); }));
        RunningChildren::kill();
        EXPECT_EQ(child->waitForExit(), SIGKILL);
        exitWithTestResult();
    };
    EXPECT_EXIT(kills(), testing::ExitedWithCode(0), "");
}

} // namespace stackreel
