#include "media/ProcessRunner.h"

#include "tests/media/RunnerTest.h"
#include "tests/support/ChildReport.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/ScopedWorkingDirectory.h"
#include "tests/support/Uuid.h"

#include <QTimer>

#include <csignal>
#include <set>
#include <thread>

namespace stackreel
{

namespace
{

using ProcessRunnerTest = RunnerTest;

/// Whether the bytes are exactly what the test child writes to an output with the command `flood`.
bool isFlood(const std::string& bytes, std::size_t mebibytes, char firstLetter)
{
    constexpr std::size_t block = 64 * 1024;
    if (bytes.size() != mebibytes * 16 * block)
        return false;
    for (std::size_t start = 0; start < bytes.size(); start += block) {
        const auto letter = static_cast<char>(firstLetter + static_cast<char>(start / block % 26));
        if (bytes.find_first_not_of(letter, start) < start + block)
            return false;
    }
    return true;
}

} // namespace

TEST_F(ProcessRunnerTest, ReturnsTheStatusAndBothOutputs)
{
    EXPECT_EQ(runToEnd(run({"exit", "0"})),
              (ProcessOutput{.status = 0, .standardOutput = "out of 0\n", .standardError = "error of 0\n"}));
}

TEST_F(ProcessRunnerTest, ReturnsTheOutputOfAFailingChild)
{
    for (const int status : {1, 7, 255}) {
        const auto output = runToEnd(run({"exit", std::to_string(status)}));
        EXPECT_EQ(output.status, status);
        EXPECT_EQ(output.standardOutput, "out of " + std::to_string(status) + "\n");
        EXPECT_EQ(output.errorText(), "error of " + std::to_string(status));
    }
}

TEST_F(ProcessRunnerTest, ReturnsTheSignalNumberWhenASignalEndsTheChild)
{
    EXPECT_EQ(runToEnd(run({"die", std::to_string(SIGSEGV)})).status, SIGSEGV);
    EXPECT_EQ(runToEnd(run({"die", std::to_string(SIGTERM)})).status, SIGTERM);
    EXPECT_EQ(runToEnd(run({"die", std::to_string(SIGKILL)})).status, SIGKILL);
}

TEST_F(ProcessRunnerTest, CapturesAFloodOnBothOutputs)
{
    const auto output = runToEnd(run({"flood", "32"}));
    EXPECT_EQ(output.status, 0);
    EXPECT_TRUE(isFlood(output.standardOutput, 32, 'a'));
    EXPECT_TRUE(isFlood(output.standardError, 32, 'A'));
}

TEST_F(ProcessRunnerTest, PassesArgumentsByteForByte)
{
    const std::vector<std::string> special = {"",   "two words", "\"'`$(id)", "line\nfeed",
                                              "-x", "東京 100%", "\xFF\x80"};
    std::vector<std::string> arguments = {"arguments"};
    arguments.insert(arguments.end(), special.begin(), special.end());
    EXPECT_EQ(pieces(runToEnd(run(arguments)).standardOutput, '\0'), special);
}

TEST_F(ProcessRunnerTest, PassesTheEnvironmentAndTheWorkingDirectoryToTheChild)
{
    const ScopedEnvironment variable("STACKREEL_TEST", "a value");
    const ScopedWorkingDirectory working(m_directory.path());
    EXPECT_EQ(pieces(runToEnd(run({"surroundings", "STACKREEL_TEST"})).standardOutput, '\0'),
              (std::vector<std::string>{m_directory.path(), "a value"}));
}

TEST_F(ProcessRunnerTest, GivesTheChildVariablesInPlaceOfThoseOfTheSameName)
{
    const ScopedEnvironment variable("STACKREEL_TEST", "inherited");
    const ScopedEnvironment longer("STACKREEL_TEST_2", "also inherited");
    const auto valueOf = [](const std::string& name) {
        const std::vector<std::string> own = {"STACKREEL_TEST=a=b c", "STACKREEL_TEST_3="};
        const auto output = runToEnd(ProcessRunner::run(testChild(), {"surroundings", name}, {}, {}, own));
        return pieces(output.standardOutput, '\0').at(1);
    };
    EXPECT_EQ(valueOf("STACKREEL_TEST"), "a=b c");
    EXPECT_EQ(valueOf("STACKREEL_TEST_2"), "also inherited");
    EXPECT_EQ(valueOf("STACKREEL_TEST_3"), "");
    EXPECT_EQ(valueOf("STACKREEL_TEST_4"), "(none)");
}

TEST_F(ProcessRunnerTest, LeaksNoDescriptorIntoAChild)
{
    EXPECT_EQ(runToEnd(run({"descriptors"})).standardOutput, "0\n1\n2\n");
}

TEST_F(ProcessRunnerTest, ResumesOnTheCallersThread)
{
    std::thread::id resumedOn;
    const auto await = [](std::thread::id& thread) -> QCoro::Task<int> {
        std::vector<std::string> arguments = {"exit", "3"};
        const ProcessOutput output = co_await run(std::move(arguments));
        thread = std::this_thread::get_id();
        co_return output.status;
    };
    EXPECT_EQ(runToEnd(await(resumedOn)), 3);
    EXPECT_EQ(resumedOn, std::this_thread::get_id());
}

TEST_F(ProcessRunnerTest, KeepsTheEventLoopRunningWhileAChildRuns)
{
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&ticks] { ++ticks; });
    timer.start(1);
    auto running = startPatientChild({});
    ticks = 0;
    EXPECT_TRUE(eventually([&ticks] { return ticks >= 20; }));
    EXPECT_FALSE(running.hasEnded());
    endPatientChild();
    EXPECT_EQ(running.result().status, 0);
}

TEST_F(ProcessRunnerTest, ContinuesWhenItsTaskIsDropped)
{
    {
        const auto dropped = run({"touch", marker()});
    }
    EXPECT_TRUE(eventually([this] { return isMarked() && scratchNames().empty(); }));
    // The last event of the worker thread of the dropped run may still be queued. The next run processes it.
    EXPECT_EQ(runToEnd(run({"exit", "0"})).status, 0);
}

TEST_F(ProcessRunnerTest, WorksInAPrivateFolderNamedByAnUpperCaseUuid)
{
    const std::string prefix = "Stackreel-Process-";
    std::set<std::string> names;
    for (int times = 0; times < 3; ++times) {
        std::filesystem::path errorFile;
        std::filesystem::perms permissions{};
        runToEnd(ProcessRunner::run(testChild(), {"exit", "0"}, {}, [&](const std::filesystem::path& file) {
            errorFile = file;
            permissions = std::filesystem::status(file.parent_path()).permissions();
        }));
        const auto folder = errorFile.parent_path();
        EXPECT_EQ(folder.parent_path(), m_scratch.path());
        const std::string name = folder.filename();
        EXPECT_TRUE(name.starts_with(prefix) && isUpperCaseUuid(name.substr(prefix.size()))) << name;
        EXPECT_EQ(errorFile.filename(), "stderr");
        EXPECT_EQ(permissions, std::filesystem::perms::owner_all);
        names.insert(folder.filename());
    }
    EXPECT_EQ(names.size(), 3U);
}

TEST_F(ProcessRunnerTest, CreatesAMissingTemporaryFolder)
{
    const ScopedEnvironment temporary("TMPDIR", m_directory / "not yet/there");
    EXPECT_EQ(runToEnd(run({"exit", "0"})).status, 0);
    EXPECT_TRUE(std::filesystem::is_empty(m_directory / "not yet/there"));
}

TEST_F(ProcessRunnerTest, CallsTheLaunchCallbackBeforeTheChildWrites)
{
    const auto self = std::this_thread::get_id();
    std::thread::id calledOn;
    std::filesystem::path errorFile;
    std::atomic<bool> launched = false;
    Awaited<ProcessOutput> running(ProcessRunner::run(testChild(), {"patient", m_directory / "pid"}, {},
                                                      [&](const std::filesystem::path& file) {
                                                          calledOn = std::this_thread::get_id();
                                                          errorFile = file;
                                                          launched = true;
                                                      }));
    ASSERT_TRUE(eventually([&] { return launched.load(); }));
    EXPECT_NE(calledOn, self);
    EXPECT_TRUE(std::filesystem::is_empty(errorFile));
    ASSERT_TRUE(eventually([this] { return std::filesystem::exists(m_directory / "pid"); }));
    endPatientChild();
    EXPECT_EQ(running.result().status, 0);
    EXPECT_FALSE(std::filesystem::exists(errorFile));
}

TEST_F(ProcessRunnerTest, RunsManyChildrenInSequenceInOneCoroutine)
{
    const auto sum = []() -> QCoro::Task<int> {
        int total = 0;
        for (int status = 0; status < 20; ++status) {
            std::vector<std::string> arguments = {"exit", std::to_string(status)};
            const ProcessOutput output = co_await run(std::move(arguments));
            total += output.status;
        }
        co_return total;
    };
    EXPECT_EQ(runToEnd(sum()), 190);
}

} // namespace stackreel
