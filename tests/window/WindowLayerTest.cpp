#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "winlayer/WindowImpl.h"

namespace {

constexpr WORD kCommand = 0x8001;

// Every handler notes its call; two entries share WM_USER, and the first of
// them always hands the message on.
class RoutedWindow : public winlayer::WindowImpl<RoutedWindow> {
public:
    static winlayer::MessageTable<RoutedWindow> Messages()
    {
        static const winlayer::MessageEntry<RoutedWindow> table[] = {
            {WM_SETTEXT, 0, &RoutedWindow::OnSetText},
            {WM_COMMAND, kCommand, &RoutedWindow::OnCommand},
            {WM_USER, 0, &RoutedWindow::OnUserFirst},
            {WM_USER, 0, &RoutedWindow::OnUserSecond},
        };
        return winlayer::MakeTable(table);
    }

    LRESULT OnSetText(WPARAM, LPARAM, bool& handled)
    {
        calls.push_back("settext");
        handled = !passSetText;
        return TRUE;
    }
    LRESULT OnCommand(WPARAM wParam, LPARAM lParam, bool&)
    {
        calls.push_back("command " + std::to_string(HIWORD(wParam)) + " " + std::to_string(lParam));
        return 11;
    }
    LRESULT OnUserFirst(WPARAM, LPARAM, bool& handled)
    {
        calls.push_back("user-first");
        handled = false;
        return 33;
    }
    LRESULT OnUserSecond(WPARAM, LPARAM, bool&)
    {
        calls.push_back("user-second");
        return 44;
    }

    bool passSetText = false;
    std::vector<std::string> calls;
};

TEST(WindowLayer, TheFirstMatchingEntryAnswersUnlessItClearsHandledAndTheHandleIsForgotten)
{
    WNDCLASSEXW wc = {};
    wc.lpszClassName = L"OrielRoutedTestWindow";
    wc.hInstance = ::GetModuleHandleW(nullptr);
    ASSERT_NE(0, RoutedWindow::RegisterWindowClass(wc));
    RoutedWindow window;
    const HWND hwnd = window.Create(wc.lpszClassName, nullptr, L"before", WS_OVERLAPPEDWINDOW, 0, nullptr,
                                    0, 0, 100, 100);
    ASSERT_NE(nullptr, hwnd);
    const auto title = [&] {
        wchar_t text[64] = {};
        ::GetWindowTextW(hwnd, text, 64);
        return std::wstring(text);
    };
    window.calls.clear();

    // A handled message never reaches the default procedure, which would
    // store the text; a cleared flag lets it.
    EXPECT_EQ(TRUE, ::SendMessageW(hwnd, WM_SETTEXT, 0, (LPARAM)L"after"));
    EXPECT_EQ(L"before", title());
    window.passSetText = true;
    ::SendMessageW(hwnd, WM_SETTEXT, 0, (LPARAM)L"after");
    EXPECT_EQ(L"after", title());

    // Commands match on the low word and get both parameters whole; one
    // without an entry reaches the default procedure, which returns 0.
    EXPECT_EQ(11, ::SendMessageW(hwnd, WM_COMMAND, MAKEWPARAM(kCommand, 7), 5));
    EXPECT_EQ(0, ::SendMessageW(hwnd, WM_COMMAND, MAKEWPARAM(kCommand + 1, 0), 0));
    // The first entry clears the flag: the default procedure answers, not the second entry.
    EXPECT_EQ(0, ::SendMessageW(hwnd, WM_USER, 0, 0));
    EXPECT_EQ((std::vector<std::string>{"settext", "settext", "command 7 5", "user-first"}), window.calls);

    ::DestroyWindow(hwnd);
    EXPECT_EQ(nullptr, window.Handle());
}

} // namespace
