#include "ui/CursorStack.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

TEST(CursorStackTest, AtFirstThereIsTheArrow)
{
    EXPECT_EQ(CursorStack().shown(), Qt::ArrowCursor);
}

TEST(CursorStackTest, WhatWasPushedLastIsShownUntilItIsPopped)
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

TEST(CursorStackTest, SettingAShapeLeavesWhatWasPushed)
{
    CursorStack cursors;
    cursors.push(Qt::OpenHandCursor);
    cursors.set(Qt::ClosedHandCursor);
    EXPECT_EQ(cursors.shown(), Qt::ClosedHandCursor);
    EXPECT_EQ(cursors.pushed(), 1U);
    cursors.pop();
    EXPECT_EQ(cursors.shown(), Qt::ArrowCursor);
}

TEST(CursorStackTest, APopTooManyLeavesTheArrow)
{
    CursorStack cursors;
    cursors.pop();
    EXPECT_EQ(cursors.shown(), Qt::ArrowCursor);
    EXPECT_EQ(cursors.pushed(), 0U);
}

} // namespace

} // namespace stackreel
