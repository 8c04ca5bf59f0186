#include <gtest/gtest.h>

#include <windows.h>

#include "view/ScrollRules.h"

TEST(ScrollRules, TopLineIsPulledBackOnlyPastTheEnd)
{
    EXPECT_EQ(0, ClampedTopLine(3, 10, 20)) << "a list that fits starts at 0";
    EXPECT_EQ(0, ClampedTopLine(-5, 20, 20));
    EXPECT_EQ(80, ClampedTopLine(95, 100, 20));
    EXPECT_EQ(40, ClampedTopLine(40, 100, 20));
    EXPECT_EQ(-7, ClampedTopLine(-7, 100, 20)) << "a negative top line of a long list stays";

    EXPECT_EQ(80, FirstTopLine(100, 20));
    EXPECT_EQ(0, FirstTopLine(5, 20));

    // lineCount already counts the new line.
    EXPECT_TRUE(FollowsNewLine(80, 101, 20));
    EXPECT_FALSE(FollowsNewLine(79, 101, 20));
    EXPECT_FALSE(FollowsNewLine(0, 1, 20)) << "a list that fits the page stays at 0";
}

TEST(ScrollRules, VerticalRequests)
{
    EXPECT_FALSE(VerticalTarget(SB_LINEUP, 0, 20, 100));
    EXPECT_EQ(4, VerticalTarget(SB_LINEUP, 5, 20, 100));
    EXPECT_EQ(6, VerticalTarget(SB_LINEDOWN, 5, 20, 100));
    EXPECT_FALSE(VerticalTarget(SB_LINEDOWN, 80, 20, 100)) << "the last line is showing";
    EXPECT_EQ(0, VerticalTarget(SB_PAGEUP, 20, 20, 100)) << "not above one page: to the top";
    EXPECT_EQ(1, VerticalTarget(SB_PAGEUP, 21, 20, 100));
    EXPECT_EQ(59, VerticalTarget(SB_PAGEDOWN, 39, 20, 100));
    EXPECT_EQ(80, VerticalTarget(SB_PAGEDOWN, 60, 20, 100)) << "the last page at most";
    EXPECT_EQ(-20, VerticalTarget(SB_PAGEDOWN, 0, 20, 0)) << "an empty list goes negative";
    for (int ignored : {SB_THUMBPOSITION, SB_THUMBTRACK, SB_TOP, SB_BOTTOM, SB_ENDSCROLL})
        EXPECT_FALSE(VerticalTarget(ignored, 5, 20, 100)) << ignored;
}

TEST(ScrollRules, HorizontalRequests)
{
    // hPos, hPage, hExtent, hStep, thumb
    auto left = HorizontalStep(SB_LINELEFT, 5, 300, 1000, 8, 0);
    EXPECT_EQ(0, left->hPos);
    EXPECT_EQ(5, left->scrollBy) << "only what is left of the offset";
    EXPECT_EQ(5, left->stripWidth);
    EXPECT_EQ(92, HorizontalStep(SB_LINELEFT, 100, 300, 1000, 8, 0)->hPos);

    auto right = HorizontalStep(SB_LINERIGHT, 695, 300, 1000, 8, 0);
    EXPECT_EQ(700, right->hPos) << "stops at the right edge";
    EXPECT_EQ(-5, right->scrollBy);
    EXPECT_EQ(108, HorizontalStep(SB_LINERIGHT, 100, 300, 1000, 8, 0)->barPos);

    auto pageRight = HorizontalStep(SB_PAGERIGHT, 100, 300, 1000, 8, 0);
    EXPECT_EQ(400, pageRight->hPos);
    EXPECT_EQ(401, pageRight->barPos) << "the bar one past the offset";
    EXPECT_TRUE(pageRight->invalidateAll);
    EXPECT_EQ(700, HorizontalStep(SB_PAGERIGHT, 500, 300, 1000, 8, 0)->hPos);
    EXPECT_EQ(0, HorizontalStep(SB_PAGELEFT, 300, 300, 1000, 8, 0)->hPos);
    EXPECT_EQ(1, HorizontalStep(SB_PAGELEFT, 301, 300, 1000, 8, 0)->hPos);

    EXPECT_EQ(-2, HorizontalStep(SB_THUMBPOSITION, 0, 300, 1000, 8, 0xFFFE)->hPos)
        << "the thumb is a signed 16-bit number";
    EXPECT_FALSE(HorizontalStep(SB_THUMBTRACK, 0, 300, 1000, 8, 50));
}
