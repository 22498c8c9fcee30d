#include "ui/FrameMailbox.h"

#include "tests/support/window/WindowWithFakes.h"

#include <gtest/gtest.h>

#include <thread>

namespace stackreel
{

namespace
{

class FrameMailboxTest : public testing::Test
{
protected:
    static VideoFrame frame(int width) { return WindowWithFakes::picture({width, 2}, Qt::red); }

    int m_changes = 0;
    FrameMailbox m_mailbox{[this] { ++m_changes; }};
};

TEST_F(FrameMailboxTest, IsEmptyAtFirstAndAfterItsFrameIsTaken)
{
    EXPECT_FALSE(m_mailbox.take());
    m_mailbox.present(frame(4));
    const auto taken = m_mailbox.take();
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->width, 4);
    EXPECT_FALSE(m_mailbox.take());
}

TEST_F(FrameMailboxTest, HoldsTheLatestFrameAndReleasesReplacedOnes)
{
    const VideoFrame first = frame(4);
    m_mailbox.present(first);
    EXPECT_EQ(first.owner.use_count(), 2);
    m_mailbox.present(frame(6));
    EXPECT_EQ(first.owner.use_count(), 1);
    EXPECT_EQ(m_mailbox.take()->width, 6);
}

TEST_F(FrameMailboxTest, NotifiesOnceUntilTheFrameIsTaken)
{
    m_mailbox.present(frame(4));
    m_mailbox.present(frame(4));
    m_mailbox.clear();
    EXPECT_EQ(m_changes, 1);
    EXPECT_EQ(m_mailbox.take()->pixels, nullptr) << "cleared last";
    m_mailbox.present(frame(4));
    EXPECT_EQ(m_changes, 2);
}

TEST_F(FrameMailboxTest, DropsHeldAndLaterFramesWhenClosed)
{
    const VideoFrame held = frame(4);
    m_mailbox.present(held);
    m_mailbox.close();
    EXPECT_EQ(held.owner.use_count(), 1);
    const VideoFrame late = frame(4);
    m_mailbox.present(late);
    m_mailbox.clear();
    EXPECT_EQ(late.owner.use_count(), 1);
    EXPECT_FALSE(m_mailbox.take());
    EXPECT_EQ(m_changes, 1);
}

TEST_F(FrameMailboxTest, GivesFramesInOrderWhenAnotherThreadPresentsThem)
{
    constexpr int count = 200;
    std::thread presenting([this] {
        for (int width = 1; width <= count; ++width)
            m_mailbox.present(frame(width));
    });
    int last = 0;
    while (last < count) {
        const auto taken = m_mailbox.take();
        if (!taken)
            continue;
        EXPECT_GT(taken->width, last);
        last = taken->width;
    }
    presenting.join();
}

} // namespace

} // namespace stackreel
