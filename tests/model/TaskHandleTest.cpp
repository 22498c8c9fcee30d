#include "model/TaskHandle.h"

#include "tests/support/fakes/ManualTask.h"

#include <QCoreApplication>
#include <QObject>

#include <gtest/gtest.h>

#include <memory>

namespace stackreel
{

namespace
{

class TaskHandleTest : public testing::Test
{
protected:
    /// Starts a task that waits for `m_work` and then sets `m_done`.
    std::shared_ptr<TaskHandle> start()
    {
        return TaskHandle::start(*m_context,
                                 [this, sentinel = m_sentinel](std::stop_token stop) -> QCoro::Task<> {
                                     m_begun = true;
                                     m_cancelledAtBegin = stop.stop_requested();
                                     co_await m_work.task();
                                     m_done = sentinel != nullptr;
                                 });
    }

    std::unique_ptr<QObject> m_context = std::make_unique<QObject>();
    ManualTask<int> m_work;
    std::shared_ptr<int> m_sentinel = std::make_shared<int>();
    bool m_begun = false;
    bool m_cancelledAtBegin = false;
    bool m_done = false;
};

} // namespace

TEST_F(TaskHandleTest, BeginsFromTheEventLoop)
{
    const auto task = start();
    EXPECT_FALSE(m_begun);
    EXPECT_FALSE(task->hasEnded());
    QCoreApplication::sendPostedEvents();
    EXPECT_TRUE(m_begun);
    EXPECT_FALSE(task->hasEnded());
    m_work.complete(0);
    EXPECT_TRUE(m_done);
    EXPECT_TRUE(task->hasEnded());
}

TEST_F(TaskHandleTest, KeepsTheBodysCapturesUntilTheWorkHasEnded)
{
    const std::weak_ptr<int> held = m_sentinel;
    start();
    m_sentinel.reset();
    QCoreApplication::sendPostedEvents();
    EXPECT_FALSE(held.expired()) << "even though the handle is destroyed";
    m_work.complete(0);
    EXPECT_TRUE(m_done);
    EXPECT_TRUE(held.expired());
}

TEST_F(TaskHandleTest, EndsWhenTheContextIsDestroyedBeforeItBegins)
{
    const auto task = start();
    m_context.reset();
    EXPECT_TRUE(task->hasEnded());
    QCoreApplication::sendPostedEvents();
    EXPECT_FALSE(m_begun);
}

TEST_F(TaskHandleTest, ContinuesWithoutTheContextOnceItHasBegun)
{
    const auto task = start();
    QCoreApplication::sendPostedEvents();
    m_context.reset();
    EXPECT_FALSE(task->hasEnded());
    m_work.complete(0);
    EXPECT_TRUE(m_done);
    EXPECT_TRUE(task->hasEnded());
}

TEST_F(TaskHandleTest, BeginsEvenWhenCancelledBefore)
{
    const auto task = start();
    task->cancel();
    task->cancel();
    EXPECT_TRUE(task->isCancelled());
    QCoreApplication::sendPostedEvents();
    EXPECT_TRUE(m_begun);
    EXPECT_TRUE(m_cancelledAtBegin);
    EXPECT_FALSE(task->hasEnded());
    m_work.complete(0);
    EXPECT_TRUE(task->hasEnded());
}

TEST_F(TaskHandleTest, EndsWhenTheBodyThrows)
{
    const auto task = start();
    QCoreApplication::sendPostedEvents();
    m_work.fail(std::runtime_error("no"));
    EXPECT_FALSE(m_done);
    EXPECT_TRUE(task->hasEnded());
}

} // namespace stackreel
