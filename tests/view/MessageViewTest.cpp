#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "ring/MessageRecord.h"
#include "support/ResourceText.h"
#include "support/ViewInput.h"
#include "view/MessageView.h"
#include "winlayer/WindowImpl.h"

namespace {

using testing_support::ClientRows;

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

// A bare window whose client area is a MessageView: what the main window and
// a browser are to the view, without anything else of theirs.
class ViewHost : public winlayer::WindowImpl<ViewHost> {
public:
    ViewHost(LineSource& source, ViewPolicy policy) : view(source, policy) { ChainMessages(view); }
    ~ViewHost() override { ::DestroyWindow(hwnd_); }
    static winlayer::MessageTable<ViewHost> Messages()
    {
        static const winlayer::MessageEntry<ViewHost> table[] = {{WM_CREATE, 0, &ViewHost::OnCreate}};
        return winlayer::MakeTable(table);
    }
    LRESULT OnCreate(WPARAM, LPARAM, bool&)
    {
        view.Attach(hwnd_);
        view.SetFont(font);
        return 0;
    }

    static inline HFONT font = nullptr;
    MessageView view;
};

constexpr wchar_t kClassName[] = L"OrielViewHost";

class ViewFixture : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        testing_support::UseEnglishModule();
        const LOGFONTW font = testing_support::ViewLogFont();
        ViewHost::font = ::CreateFontIndirectW(&font);
        WNDCLASSEXW wc = {};
        wc.hInstance = ::GetModuleHandleW(nullptr);
        wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
        wc.lpszClassName = kClassName;
        ViewHost::RegisterWindowClass(wc);
    }
    static void TearDownTestSuite() { ::DeleteObject(ViewHost::font); }

    // A host window `lines` lines high around `source`, in place of any before.
    void CreateHost(LineSource& source, ViewPolicy policy, int lines)
    {
        RECT r = testing_support::WindowRectForLines(lines, WS_EX_CLIENTEDGE, false);
        // Room for the horizontal bar, which appears once a line is measured.
        if (source.LineCount() > 0)
            r.bottom += ::GetSystemMetrics(SM_CYHSCROLL);
        host = std::make_unique<ViewHost>(source, policy);
        ASSERT_NE(nullptr, host->Create(kClassName, nullptr, L"view test",
                                        WS_OVERLAPPEDWINDOW | WS_VSCROLL | WS_VISIBLE, WS_EX_CLIENTEDGE,
                                        nullptr, r.left, r.top, r.right - r.left, r.bottom - r.top));
        ASSERT_EQ(lines, View().LinesPerPage());
    }

    HWND Hwnd() const { return host->Handle(); }
    MessageView& View() const { return host->view; }
    void Key(WPARAM key, bool control = false) { testing_support::SendKey(Hwnd(), key, control); }
    void VScroll(int request) { testing_support::SendVScroll(Hwnd(), request); }
    void HScroll(int request, int thumb = 0) { testing_support::SendHScroll(Hwnd(), request, thumb); }
    std::wstring PageText(int i) const { return testing_support::PageLine(View(), i); }
    SCROLLINFO Bar(int bar) const { return testing_support::ScrollBarOf(Hwnd(), bar); }

    std::unique_ptr<ViewHost> host;
};

// Both policies follow one set of scrolling rules (ScrollRulesTest holds
// their arithmetic); the cases below that hold for either run once with each.
class ViewRules : public ViewFixture, public ::testing::WithParamInterface<ViewPolicy> {};

TEST_P(ViewRules, ScrollBarsAndKeysMoveThePage)
{
    FakeLines lines(500);
    CreateHost(lines, GetParam(), 20);

    Key(VK_HOME, true);
    EXPECT_EQ(0, View().TopLine());
    EXPECT_EQ(L"line 0", PageText(0));
    Key(VK_DOWN);
    EXPECT_EQ(1, View().TopLine());
    VScroll(SB_PAGEDOWN);
    EXPECT_EQ(21, View().TopLine());
    Key(VK_PRIOR);
    EXPECT_EQ(1, View().TopLine());

    // Dragging the thumb scrolls nothing until it is let go.
    ::SetScrollPos(Hwnd(), SB_VERT, 250, FALSE);
    VScroll(SB_THUMBTRACK);
    EXPECT_EQ(1, View().TopLine());
    VScroll(SB_THUMBPOSITION);
    EXPECT_EQ(250, View().TopLine());
    EXPECT_EQ(L"line 250", PageText(0));

    Key(VK_END, true);
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
    EXPECT_EQ(bar.nMax - static_cast<int>(bar.nPage), View().HorizontalPosition());
    Key(VK_HOME);
    EXPECT_EQ(0, View().HorizontalPosition());
    EXPECT_EQ(0, Bar(SB_HORZ).nPos);
    Key(VK_RIGHT);
    EXPECT_GT(View().HorizontalPosition(), 0);
    Key(VK_LEFT);
    EXPECT_EQ(0, View().HorizontalPosition());
    HScroll(SB_THUMBPOSITION, 7);
    EXPECT_EQ(7, View().HorizontalPosition());
}

// On an empty list Page Down shows the policies apart: the live view pulls
// the page back onto the list, a browser reads at the top line as it stands.
TEST_P(ViewRules, EmptyListIsNeverMeasuredAndOnlyTheLiveViewClampsTheTopLine)
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
    Key(VK_NEXT);
    const int top = GetParam().clampTopLine ? 0 : -20;
    EXPECT_EQ(top, View().TopLine());
    EXPECT_EQ(top, lines.requestedTops.back());
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
    const int lineHeight = View().LineHeight();
    few.Add();
    View().ShowAddedLine();
    EXPECT_EQ(std::make_pair(3 * lineHeight, 4 * lineHeight), DirtyRows(Hwnd()));

    FakeLines many(100);
    CreateHost(many, kLiveViewPolicy, 20);
    Key(VK_END, true);
    ::UpdateWindow(Hwnd());
    RECT client;
    ::GetClientRect(Hwnd(), &client);
    const std::vector<DWORD> before = ClientRows(Hwnd(), lineHeight, 18 * lineHeight);
    many.Add();
    View().ShowAddedLine();
    EXPECT_EQ(81, View().TopLine());
    EXPECT_EQ(std::make_pair(18 * lineHeight, static_cast<int>(client.bottom)), DirtyRows(Hwnd()));
    EXPECT_TRUE(before == ClientRows(Hwnd(), 0, 17 * lineHeight)) << "scrolled by one line";
}

} // namespace
