#include "pagekit/UIViewFrameAdditions.h"

#include <gtest/gtest.h>

using namespace FrameAdditions;

TEST(FrameAdditions, EdgesResizeAndNeverGoNegative)
{
    CGRect frame = CGRectMake(10, 20, 30, 40);
    EXPECT_EQ(left(frame), 10);
    EXPECT_EQ(top(frame), 20);
    EXPECT_EQ(right(frame), 40);
    EXPECT_EQ(bottom(frame), 60);
    EXPECT_EQ(centerX(frame), 25);
    EXPECT_EQ(centerY(frame), 40);

    CGRect moved = frame;
    setLeft(moved, 15);
    EXPECT_EQ(moved, CGRectMake(15, 20, 25, 40));
    setLeft(moved, 100);
    EXPECT_EQ(moved, CGRectMake(100, 20, 0, 40));

    moved = frame;
    setTop(moved, 70);
    EXPECT_EQ(moved.size.height, 0);
    setBottom(moved, 50);
    EXPECT_EQ(moved, CGRectMake(10, 70, 30, 0));
    setRight(moved, 25);
    EXPECT_EQ(moved.size.width, 15);
    // Single precision, as the platform computes.
    CGRect precise = CGRectMake(0, 0, 0, 0);
    setRight(precise, 0.1);
    EXPECT_EQ(precise.size.width, static_cast<double>(0.1f));
}

TEST(FrameAdditions, MoversKeepTheSize)
{
    CGRect frame = CGRectMake(0, 0, 30, 40);
    setRightM(frame, 100);
    EXPECT_EQ(frame, CGRectMake(70, 0, 30, 40));
    setBottomM(frame, 50);
    EXPECT_EQ(frame, CGRectMake(70, 10, 30, 40));
    setCenterX(frame, 15);
    setCenterY(frame, 20);
    EXPECT_EQ(frame, CGRectMake(0, 0, 30, 40));
    setLeftM(frame, 18);
    setTopM(frame, -2);
    EXPECT_EQ(frame, CGRectMake(18, -2, 30, 40));
}
