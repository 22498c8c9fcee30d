#include "ui/CursorStack.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

TEST(CursorStackTest, ShowsTheArrowAtFirst)
{
    EXPECT_EQ(CursorStack().current(), Qt::ArrowCursor);
}

TEST(CursorStackTest, ShowsTheLastPushedShapeUntilItIsPopped)
{
    CursorStack cursors;
    cursors.push(Qt::OpenHandCursor);
    cursors.push(Qt::ClosedHandCursor);
    EXPECT_EQ(cursors.current(), Qt::ClosedHandCursor);
    cursors.pop();
    EXPECT_EQ(cursors.current(), Qt::OpenHandCursor);
    cursors.pop();
    EXPECT_EQ(cursors.current(), Qt::ArrowCursor);
}

TEST(CursorStackTest, SettingAShapeDoesNotChangeTheStack)
{
    CursorStack cursors;
    cursors.push(Qt::OpenHandCursor);
    cursors.set(Qt::ClosedHandCursor);
    EXPECT_EQ(cursors.current(), Qt::ClosedHandCursor);
    EXPECT_EQ(cursors.depth(), 1U);
    cursors.pop();
    EXPECT_EQ(cursors.current(), Qt::ArrowCursor);
}

TEST(CursorStackTest, PoppingAnEmptyStackShowsTheArrow)
{
    CursorStack cursors;
    cursors.pop();
    EXPECT_EQ(cursors.current(), Qt::ArrowCursor);
    EXPECT_EQ(cursors.depth(), 0U);
}

} // namespace

} // namespace stackreel
