#include "support/MessageBoxRecorder.h"

namespace testing_support {

namespace {
std::vector<MessageBoxRecorder::Box>* activeBoxes = nullptr;
}

MessageBoxRecorder::MessageBoxRecorder()
{
    activeBoxes = &boxes_;
    hook_ = ::SetWindowsHookExW(WH_CBT, &MessageBoxRecorder::HookProc, nullptr,
                                ::GetCurrentThreadId());
}

MessageBoxRecorder::~MessageBoxRecorder()
{
    ::UnhookWindowsHookEx(hook_);
    activeBoxes = nullptr;
}

LRESULT CALLBACK MessageBoxRecorder::HookProc(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HCBT_ACTIVATE && activeBoxes != nullptr) {
        HWND box = reinterpret_cast<HWND>(wParam);
        wchar_t className[16] = {};
        ::GetClassNameW(box, className, 16);
        // A message box is a dialog whose text is the static control 0xFFFF.
        if (std::wstring(className) == L"#32770" && ::GetDlgItem(box, 0xFFFF) != nullptr) {
            wchar_t text[1024] = {};
            wchar_t caption[256] = {};
            ::GetDlgItemTextW(box, 0xFFFF, text, 1024);
            ::GetWindowTextW(box, caption, 256);
            activeBoxes->push_back({text, caption, ::GetWindow(box, GW_OWNER)});
            int button = ::GetDlgItem(box, IDOK) != nullptr ? IDOK : IDCANCEL;
            ::PostMessageW(box, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                           reinterpret_cast<LPARAM>(::GetDlgItem(box, button)));
        }
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

} // namespace testing_support
