#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "winlayer/WindowImpl.h"

namespace {

constexpr WORD kFirstCommand = 0x8001;
constexpr WORD kSecondCommand = 0x8002;

class RoutedWindow : public winlayer::WindowImpl<RoutedWindow> {
public:
    static winlayer::MessageTable<RoutedWindow> Messages()
    {
        static const winlayer::MessageEntry<RoutedWindow> table[] = {
            {WM_SETTEXT, 0, &RoutedWindow::OnSetText},
            {WM_COMMAND, kFirstCommand, &RoutedWindow::OnFirst},
            {WM_COMMAND, kSecondCommand, &RoutedWindow::OnSecond},
            {WM_USER + 1, 0, &RoutedWindow::OnUserFirst},
            {WM_USER + 1, 0, &RoutedWindow::OnUserSecond},
        };
        return winlayer::MakeTable(table);
    }

    bool passSetText = false;
    std::vector<std::string> calls;
    WPARAM lastCommandParam = 0;
    LPARAM lastCommandControl = 0;

    LRESULT OnSetText(WPARAM, LPARAM, bool& handled)
    {
        calls.push_back("settext");
        handled = !passSetText;
        return TRUE;
    }
    LRESULT OnFirst(WPARAM wParam, LPARAM lParam, bool&)
    {
        calls.push_back("first");
        lastCommandParam = wParam;
        lastCommandControl = lParam;
        return 11;
    }
    LRESULT OnSecond(WPARAM, LPARAM, bool&) { calls.push_back("second"); return 22; }
    LRESULT OnUserFirst(WPARAM, LPARAM, bool& handled)
    {
        calls.push_back("user-first");
        handled = false;
        return 33;
    }
    LRESULT OnUserSecond(WPARAM, LPARAM, bool&) { calls.push_back("user-second"); return 44; }
};

class WindowLayer : public ::testing::Test {
protected:
    void SetUp() override
    {
        static bool registered = false;
        if (!registered) {
            WNDCLASSEXW wc = {};
            wc.lpszClassName = L"OrielRoutedTestWindow";
            wc.hInstance = ::GetModuleHandleW(nullptr);
            ASSERT_NE(0, RoutedWindow::RegisterWindowClass(wc));
            registered = true;
        }
        ASSERT_NE(nullptr, window.Create(L"OrielRoutedTestWindow", nullptr, L"before",
                                         WS_OVERLAPPEDWINDOW, 0, nullptr, 0, 0, 100, 100));
    }
    void TearDown() override
    {
        if (window.Handle() != nullptr)
            ::DestroyWindow(window.Handle());
    }
    std::wstring Title()
    {
        wchar_t text[64] = {};
        ::GetWindowTextW(window.Handle(), text, 64);
        return text;
    }
    RoutedWindow window;
};

TEST_F(WindowLayer, HandledMessageSkipsTheDefaultProcedureAndAClearedFlagRunsIt)
{
    window.calls.clear();
    EXPECT_EQ(TRUE, ::SendMessageW(window.Handle(), WM_SETTEXT, 0, (LPARAM)L"after"));
    EXPECT_EQ(std::vector<std::string>{"settext"}, window.calls);
    EXPECT_EQ(L"before", Title());  // the default procedure never stored the text
    window.passSetText = true;
    ::SendMessageW(window.Handle(), WM_SETTEXT, 0, (LPARAM)L"after");
    EXPECT_EQ(L"after", Title());
}

TEST_F(WindowLayer, CommandsMatchOnTheLowWordOnlyTheFirstEntryRunsAndTheHandleIsForgotten)
{
    HWND control = window.Handle();
    EXPECT_EQ(11, ::SendMessageW(window.Handle(), WM_COMMAND, MAKEWPARAM(kFirstCommand, 0x1234),
                                 (LPARAM)control));
    EXPECT_EQ(MAKEWPARAM(kFirstCommand, 0x1234), window.lastCommandParam);
    EXPECT_EQ((LPARAM)control, window.lastCommandControl);
    EXPECT_EQ(22, ::SendMessageW(window.Handle(), WM_COMMAND, MAKEWPARAM(kSecondCommand, 1), 0));
    // A command without an entry reaches the default procedure, which returns 0.
    window.calls.clear();
    EXPECT_EQ(0, ::SendMessageW(window.Handle(), WM_COMMAND, MAKEWPARAM(0x8003, 0), 0));
    EXPECT_TRUE(window.calls.empty());
    // The first entry clears the flag: the default procedure answers, not the second entry.
    EXPECT_EQ(0, ::SendMessageW(window.Handle(), WM_USER + 1, 0, 0));
    EXPECT_EQ(std::vector<std::string>{"user-first"}, window.calls);

    // The object forgets its handle when the window is destroyed.
    HWND hwnd = window.Handle();
    ::DestroyWindow(hwnd);
    EXPECT_EQ(nullptr, window.Handle());
    EXPECT_FALSE(::IsWindow(hwnd));
}

} // namespace
