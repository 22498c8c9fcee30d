#include "tests/support/MessageBus.h"

#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace stackreel
{

namespace
{

/// Tests with a script in place of the D-Bus daemon. The script records each of its starts.
class MessageBusTest : public testing::Test
{
protected:
    QString program(const std::string& script) const
    {
        const auto file = m_folder.writeExecutable(
            "bus", "#!/bin/sh\nstarts=$(dirname \"$0\")/starts\necho start >>\"$starts\"\n" + script + "\n");
        return QString::fromStdString(file.string());
    }
    std::string starts() const { return contentOf(m_folder / "starts"); }

private:
    TemporaryDirectory m_folder;
};

TEST_F(MessageBusTest, ReportsWhatABusSaidThatDoesNotComeUp)
{
    try {
        const MessageBus bus(program("echo 'no configuration' >&2; exit 1"));
        FAIL() << "it came up";
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find("no configuration"), std::string::npos) << error.what();
    }
    EXPECT_EQ(starts(), "start\nstart\nstart\n");
}

TEST_F(MessageBusTest, StartsABusAgainThatEndsBeforeItIsReady)
{
    const MessageBus bus(program("[ $(wc -l <\"$starts\") = 2 ] || exit 1\n"
                                 "echo unix:path=/somewhere; exec sleep 60"));
    EXPECT_EQ(bus.address(), QStringLiteral("unix:path=/somewhere"));
    EXPECT_EQ(starts(), "start\nstart\n");
}

TEST_F(MessageBusTest, ReportsABusThatIsMissing)
{
    EXPECT_THROW(MessageBus(QStringLiteral("/nonexistent/bus")), std::runtime_error);
}

} // namespace

} // namespace stackreel
