#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ViewHost.h"
#include "ring/MessageRecord.h"
#include "support/ViewInput.h"

namespace {

// Lines "line 0", "line 1", ...; each refill can make the list grow, as a
// saved log does while the writer appends to it.
class FakeLines : public LineSource {
public:
    explicit FakeLines(int count) : count_(count) {}

    int LineCount() const override { return count_; }
    int FillPage(int topLine, MessageRecord* page, int linesPerPage) override
    {
        requestedTops.push_back(topLine);
        int filled = 0;
        for (int line = topLine; filled < linesPerPage && line >= 0 && line < count_; ++line) {
            const std::wstring text = L"line " + std::to_wstring(line);
            text.copy(page[filled++].text, text.size());
        }
        count_ += growthPerFill;
        return filled;
    }
    void Add() { ++count_; }

    int growthPerFill = 0;
    std::vector<int> requestedTops;

private:
    int count_;
};

// Both policies follow one set of scrolling rules; the cases below that
// hold for either run once with each.
class ViewRules : public ViewFixture, public ::testing::WithParamInterface<ViewPolicy> {
protected:
    void Key(WPARAM key, bool control = false) { testing_support::SendKey(Hwnd(), key, control); }
    void VScroll(int request) { testing_support::SendVScroll(Hwnd(), request); }
    void HScroll(int request, int thumb = 0) { testing_support::SendHScroll(Hwnd(), request, thumb); }
    std::wstring PageText(int i) const { return testing_support::PageLine(View(), i); }
    SCROLLINFO Bar(int bar) const { return testing_support::ScrollBarOf(Hwnd(), bar); }
};

TEST_P(ViewRules, ScrollBarsAndKeysMoveThePage)
{
    FakeLines lines(500);
    CreateHost(lines, GetParam(), 20);

    Key(VK_HOME, true);
    EXPECT_EQ(0, View().TopLine());
    EXPECT_EQ(L"line 0", PageText(0));
    Key(VK_DOWN);
    EXPECT_EQ(1, View().TopLine());
    EXPECT_EQ(L"line 20", PageText(19));
    VScroll(SB_PAGEDOWN);
    EXPECT_EQ(21, View().TopLine());
    Key(VK_PRIOR);
    EXPECT_EQ(1, View().TopLine());
    VScroll(SB_PAGEUP);
    EXPECT_EQ(0, View().TopLine());

    // Dragging the thumb scrolls nothing until it is let go.
    ::SetScrollPos(Hwnd(), SB_VERT, 250, FALSE);
    VScroll(SB_THUMBTRACK);
    EXPECT_EQ(0, View().TopLine());
    VScroll(SB_THUMBPOSITION);
    EXPECT_EQ(250, View().TopLine());
    EXPECT_EQ(L"line 250", PageText(0));

    Key(VK_END, true);
    EXPECT_EQ(480, View().TopLine());
    EXPECT_EQ(L"line 499", PageText(19));
}

TEST_P(ViewRules, HorizontalBarIsMeasuredOnTheWidestLine)
{
    FakeLines lines(50);
    CreateHost(lines, GetParam(), 20);
    SCROLLINFO bar = Bar(SB_HORZ);
    ASSERT_GT(bar.nMax, static_cast<int>(bar.nPage)) << "a line of ideographs is wider than the view";
    EXPECT_EQ(1, bar.nPos) << "measuring sets the bar one past the offset";

    Key(VK_END);
    const int rightmost = bar.nMax - static_cast<int>(bar.nPage);
    EXPECT_EQ(rightmost, View().HorizontalPosition());
    Key(VK_RIGHT);
    EXPECT_EQ(rightmost, View().HorizontalPosition());
    Key(VK_HOME);
    EXPECT_EQ(0, View().HorizontalPosition());
    EXPECT_EQ(0, Bar(SB_HORZ).nPos);
    Key(VK_RIGHT);
    EXPECT_GT(View().HorizontalPosition(), 0);
    Key(VK_LEFT);
    EXPECT_EQ(0, View().HorizontalPosition());

    // A page right from the left edge; the bar is set one past the offset.
    const int page = static_cast<int>(bar.nPage);
    const int expected = 2 * page < bar.nMax ? page : bar.nMax - page;
    HScroll(SB_PAGERIGHT);
    EXPECT_EQ(expected, View().HorizontalPosition());
    EXPECT_EQ(expected + 1, Bar(SB_HORZ).nPos);
    HScroll(SB_THUMBPOSITION, 7);
    EXPECT_EQ(7, View().HorizontalPosition());
    HScroll(SB_THUMBTRACK, 90);
    EXPECT_EQ(7, View().HorizontalPosition());
}

TEST_P(ViewRules, EmptyListIsNeverMeasured)
{
    FakeLines lines(0);
    CreateHost(lines, GetParam(), 20);
    SCROLLINFO bar = Bar(SB_VERT);
    EXPECT_LE(bar.nMax, bar.nMin) << "an empty range";
    EXPECT_EQ(0, View().PageCount());
    // With no line laid out, the width was never measured: Right and End do nothing.
    Key(VK_END);
    Key(VK_RIGHT);
    EXPECT_EQ(0, View().HorizontalPosition());
}

// Ctrl+End on a list that grows while the page is read: the bar's range
// then leaves room to see where the view put it.
TEST_P(ViewRules, CtrlEndPutsTheBarWhereThePolicySays)
{
    FakeLines lines(100);
    CreateHost(lines, GetParam(), 10);
    lines.growthPerFill = 50;
    Key(VK_END, true);
    ASSERT_EQ(lines.requestedTops.back(), View().TopLine());
    // The live view has always put the bar one past its top line.
    EXPECT_EQ(View().TopLine() + (GetParam().clampTopLine ? 1 : 0), Bar(SB_VERT).nPos);
}

INSTANTIATE_TEST_SUITE_P(LiveAndBrowser, ViewRules,
                         ::testing::Values(kLiveViewPolicy, kBrowserViewPolicy),
                         [](const ::testing::TestParamInfo<ViewPolicy>& info) {
                             return info.param.clampTopLine ? "Live" : "Browser";
                         });

// The live view pulls the page back onto the list; a browser reads at the
// top line as it stands, negative or past the end.
TEST_F(ViewFixture, OnlyTheLiveViewClampsTheTopLine)
{
    FakeLines live(0);
    CreateHost(live, kLiveViewPolicy, 20);
    testing_support::SendKey(Hwnd(), VK_NEXT);
    EXPECT_EQ(0, View().TopLine());
    EXPECT_EQ(0, live.requestedTops.back());
    ::DestroyWindow(Hwnd());

    FakeLines saved(0);
    CreateHost(saved, kBrowserViewPolicy, 20);
    testing_support::SendKey(Hwnd(), VK_NEXT);
    EXPECT_EQ(-20, View().TopLine());
    EXPECT_EQ(-20, saved.requestedTops.back());
    testing_support::SendKey(Hwnd(), VK_END, true);
    EXPECT_EQ(-20, saved.requestedTops.back());
}

// Top and bottom of the area waiting to be painted.
std::pair<int, int> DirtyRows(HWND window)
{
    RECT dirty = {};
    ::GetUpdateRect(window, &dirty, FALSE);
    return {dirty.top, dirty.bottom};
}

// A new line redraws only what changed: its own band while the list is
// shorter than the page; at the bottom the page moves up one line on screen
// and only the last lines are drawn again.
TEST_F(ViewFixture, AddedLineRedrawsOnlyWhatChanged)
{
    FakeLines few(3);
    CreateHost(few, kLiveViewPolicy, 20);
    ::UpdateWindow(Hwnd());
    few.Add();
    View().ShowAddedLine();
    EXPECT_EQ(std::make_pair(3 * lineHeight, 4 * lineHeight), DirtyRows(Hwnd()));
    ::DestroyWindow(Hwnd());

    FakeLines many(100);
    CreateHost(many, kLiveViewPolicy, 20);
    testing_support::SendKey(Hwnd(), VK_END, true);
    ::UpdateWindow(Hwnd());
    RECT client;
    ::GetClientRect(Hwnd(), &client);
    const std::vector<DWORD> before = testing_support::ClientRows(Hwnd(), lineHeight, 18 * lineHeight);
    many.Add();
    View().ShowAddedLine();
    EXPECT_EQ(81, View().TopLine());
    EXPECT_EQ(std::make_pair(18 * lineHeight, static_cast<int>(client.bottom)), DirtyRows(Hwnd()));
    EXPECT_TRUE(before == testing_support::ClientRows(Hwnd(), 0, 17 * lineHeight)) << "scrolled by one line";
}

} // namespace
