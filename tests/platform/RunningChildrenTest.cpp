#include "platform/RunningChildren.h"

#include "platform/ChildProcess.h"
#include "platform/Files.h"
#include "platform/SystemError.h"
#include "tests/support/Awaited.h"
#include "tests/support/ChildReport.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>

namespace stackreel
{

namespace
{

/// Each test ends the starting of children for its whole process, so it runs in one of its own.
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
    /// A child that ends at the Nth request, or, for none, never of its own accord.
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

/// Ends the process with status 0 when all expectations so far were met.
[[noreturn]] void leave()
{
    std::exit(testing::Test::HasFailure() ? 1 : 0);
}

} // namespace

TEST_F(RunningChildrenTest, CountsWhatHasNotBeenCollected)
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
        leave();
    };
    EXPECT_EXIT(ends(), testing::ExitedWithCode(0), "");
}

TEST_F(RunningChildrenDeathTest, NoChildStartsAfterTheEnd)
{
    const auto refuses = [this] {
        RunningChildren::end();
        EXPECT_THROW(launch({"exit", "0"}), SystemError);
        EXPECT_EQ(RunningChildren::count(), 0U);
        leave();
    };
    EXPECT_EXIT(refuses(), testing::ExitedWithCode(0), "");
}

TEST_F(RunningChildrenDeathTest, KillEndsAChildThatTakesNoHints)
{
    const auto kills = [this] {
        auto child = launchPatient("stubborn");
        RunningChildren::end();
        EXPECT_TRUE(eventually([&] { return std::filesystem::exists(m_directory / "stubborn.requests"); }));
        RunningChildren::kill();
        EXPECT_EQ(child->waitForExit(), SIGKILL);
        leave();
    };
    EXPECT_EXIT(kills(), testing::ExitedWithCode(0), "");
}

} // namespace stackreel
