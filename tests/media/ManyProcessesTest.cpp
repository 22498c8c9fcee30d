#include "media/CancellationError.h"
#include "tests/media/RunnerTest.h"
#include "tests/support/Descriptors.h"

namespace stackreel
{

namespace
{

using ManyProcessesTest = RunnerTest;

} // namespace

TEST_F(ManyProcessesTest, ReturnEachOfAThousandRunsItsOwnStatusAndOutput)
{
    const ScopedDescriptorLimit highest;
    std::vector<Awaited<ProcessOutput>> running;
    for (int child = 0; child < 1000; ++child)
        running.emplace_back(run({"exit", std::to_string(child % 256)}));
    for (int child = 0; child < 1000; ++child) {
        const auto output = running.at(static_cast<std::size_t>(child)).result(std::chrono::seconds(240));
        EXPECT_EQ(output.status, child % 256);
        EXPECT_EQ(output.standardOutput, "out of " + std::to_string(child % 256) + "\n");
        EXPECT_EQ(output.standardError, "error of " + std::to_string(child % 256) + "\n");
    }
}

TEST_F(ManyProcessesTest, EndAHundredRunsWhenAllAreCancelled)
{
    const ScopedDescriptorLimit highest;
    std::stop_source source;
    std::vector<Awaited<ProcessOutput>> running;
    for (int child = 0; child < 100; ++child)
        running.emplace_back(
            run({"patient", m_directory / ("pid" + std::to_string(child)), "1"}, source.get_token()));
    // At this point some children are running, some are being launched and some have not been launched yet.
    EXPECT_TRUE(eventually([this] { return m_directory.names().size() > 20; }));
    source.request_stop();
    for (auto& run : running)
        EXPECT_THROW(run.result(), CancellationError);
}

} // namespace stackreel
