#include "ui/CursorStack.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

TEST(CursorStackTest, ShowsTheArrowAtFirst)
{
    EXPECT_EQ(CursorStack().shown(), Qt::ArrowCursor);
}

TEST(CursorStackTest, ShowsTheLastPushedShapeUntilItIsPopped)
{
    CursorStack cursors;
    cursors.push(Qt::OpenHandCursor);
    cursors.push(Qt::ClosedHandCursor);
    EXPECT_EQ(cursors.shown(), Qt::ClosedHandCursor);
    cursors.pop();
    EXPECT_EQ(cursors.shown(), Qt::OpenHandCursor);
    cursors.pop();
    EXPECT_EQ(cursors.shown(), Qt::ArrowCursor);
}

TEST(CursorStackTest, SettingAShapeDoesNotChangeTheStack)
{
    CursorStack cursors;
    cursors.push(Qt::OpenHandCursor);
    cursors.set(Qt::ClosedHandCursor);
    EXPECT_EQ(cursors.shown(), Qt::ClosedHandCursor);
    EXPECT_EQ(cursors.pushed(), 1U);
    cursors.pop();
    EXPECT_EQ(cursors.shown(), Qt::ArrowCursor);
}

TEST(CursorStackTest, PoppingAnEmptyStackShowsTheArrow)
{
    CursorStack cursors;
    cursors.pop();
    EXPECT_EQ(cursors.shown(), Qt::ArrowCursor);
    EXPECT_EQ(cursors.pushed(), 0U);
}

} // namespace

} // namespace stackreel
