#include "tools/qxltool/BoxesToStderr.h"

#include "tools/qxltool/OutputStream.h"

#include <string>

namespace {
BoxesToStderr* active = nullptr;
// The static control that holds a message box's text.
constexpr int kMessageBoxText = 0xFFFF;
} // namespace

BoxesToStderr::BoxesToStderr()
{
    active = this;
    hook_ = ::SetWindowsHookExW(WH_CBT, &BoxesToStderr::HookProc, nullptr, ::GetCurrentThreadId());
}

BoxesToStderr::~BoxesToStderr()
{
    ::UnhookWindowsHookEx(hook_);
    active = nullptr;
}

LRESULT CALLBACK BoxesToStderr::HookProc(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HCBT_ACTIVATE && active != nullptr) {
        HWND box = reinterpret_cast<HWND>(wParam);
        wchar_t className[16] = {};
        ::GetClassNameW(box, className, 16);
        if (std::wstring(className) == L"#32770" && ::GetDlgItem(box, kMessageBoxText) != nullptr) {
            wchar_t text[1024] = {};
            wchar_t caption[256] = {};
            ::GetDlgItemTextW(box, kMessageBoxText, text, 1024);
            ::GetWindowTextW(box, caption, 256);
            std::wstring message = std::wstring(caption) + L": " + text;
            while (!message.empty() && (message.back() == L'\n' || message.back() == L'\r'))
                message.pop_back();
            ReportError(message);
            ++active->count_;
            const int button = ::GetDlgItem(box, IDOK) != nullptr ? IDOK : IDCANCEL;
            ::PostMessageW(box, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                           reinterpret_cast<LPARAM>(::GetDlgItem(box, button)));
        }
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}
