#include "support/DialogScript.h"

namespace testing_support {

namespace {

DialogScript* active = nullptr;

bool IsMenu(HWND window)
{
    wchar_t className[16] = {};
    ::GetClassNameW(window, className, 16);
    return std::wstring(className) == L"#32768";
}

// The file dialog's name box is the control 0x47C, or the edit inside it
// when it is a combo box; it may sit one level down in a child dialog.
HWND FileNameEdit(HWND dialog)
{
    HWND edit = nullptr;
    ::EnumChildWindows(
        dialog,
        [](HWND child, LPARAM found) {
            if (::GetDlgCtrlID(child) != 0x47C)
                return TRUE;
            HWND inner = ::FindWindowExW(child, nullptr, L"Edit", nullptr);
            *reinterpret_cast<HWND*>(found) = inner != nullptr ? inner : child;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&edit));
    return edit;
}

} // namespace

DialogScript::DialogScript()
{
    owner_ = ::CreateWindowExW(0, L"Static", L"dialog script owner", WS_OVERLAPPED, 0, 0, 10, 10,
                               nullptr, nullptr, nullptr, nullptr);
    // A script made while another lives takes over until it goes; the hooks
    // of the first serve both, so no event is handled twice.
    outer_ = active;
    active = this;
    if (outer_ != nullptr)
        return;
    idleHook_ = ::SetWindowsHookExW(WH_CALLWNDPROC, &DialogScript::IdleHook, nullptr,
                                    ::GetCurrentThreadId());
    activationHook_ = ::SetWindowsHookExW(WH_CBT, &DialogScript::ActivationHook, nullptr,
                                          ::GetCurrentThreadId());
}

DialogScript::~DialogScript()
{
    if (outer_ == nullptr) {
        ::UnhookWindowsHookEx(activationHook_);
        ::UnhookWindowsHookEx(idleHook_);
    }
    active = outer_;
    ::DestroyWindow(owner_);
}

DialogScript& DialogScript::Then(Step step)
{
    return ThenWhen([](HWND) { return true; }, std::move(step));
}

DialogScript& DialogScript::ThenWhen(std::function<bool(HWND window)> ready, Step step)
{
    steps_.push_back({std::move(ready), std::move(step)});
    return *this;
}

LRESULT CALLBACK DialogScript::IdleHook(int code, WPARAM wParam, LPARAM lParam)
{
    const auto* call = reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (code == HC_ACTION && active != nullptr && call->message == WM_ENTERIDLE) {
        HWND window = reinterpret_cast<HWND>(call->lParam);
        // A popup menu's loop tells once per menu, not always naming it.
        if (call->wParam == MSGF_MENU && window == nullptr)
            window = ::FindWindowW(L"#32768", nullptr);
        if (call->wParam == MSGF_DIALOGBOX || call->wParam == MSGF_MENU)
            active->OnWaiting(window);
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

LRESULT CALLBACK DialogScript::ActivationHook(int code, WPARAM wParam, LPARAM lParam)
{
    const HWND window = reinterpret_cast<HWND>(wParam);
    // Marked, not remembered by handle: a later box may get the same one.
    if (code == HCBT_ACTIVATE && active != nullptr &&
        (::GetWindowLongW(window, GWL_STYLE) & DS_NOIDLEMSG) != 0 &&
        ::GetPropW(window, L"OrielScriptSaw") == nullptr) {
        ::SetPropW(window, L"OrielScriptSaw", reinterpret_cast<HANDLE>(1));
        if (IsMessageBox(window)) {
            wchar_t caption[256] = {};
            ::GetWindowTextW(window, caption, 256);
            active->boxes_.push_back({ItemText(window, 0xFFFF), caption, ::GetWindow(window, GW_OWNER)});
        }
        active->OnWaiting(window);
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

void DialogScript::OnWaiting(HWND window)
{
    if (steps_.empty()) {
        if (IsMenu(window)) {
            cancelled_ = true;
            ::EndMenu();
        } else if (IsMessageBox(window)) {
            Click(window, ::GetDlgItem(window, IDOK) != nullptr ? IDOK : IDCANCEL);
        } else {
            cancelled_ = true;
            Click(window, IDCANCEL);
        }
        return;
    }
    constexpr int kMaxWaits = 500;
    if (!steps_.front().ready(window) && ++waits_ < kMaxWaits) {
        ::Sleep(10);
    } else {
        waits_ = 0;
        Step step = std::move(steps_.front().step);
        steps_.pop_front();
        step(window);
    }
    // Wakes the loop, so the next step comes even after a step that only looked.
    ::PostMessageW(window, WM_NULL, 0, 0);
}

void Click(HWND dialog, int id)
{
    ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                   reinterpret_cast<LPARAM>(::GetDlgItem(dialog, id)));
}

void Type(HWND dialog, int id, const std::wstring& text)
{
    ::SetDlgItemTextW(dialog, id, text.c_str());
}

std::wstring ItemText(HWND dialog, int id)
{
    wchar_t text[1024] = {};
    ::GetDlgItemTextW(dialog, id, text, 1024);
    return text;
}

bool IsMessageBox(HWND window)
{
    return ::GetDlgItem(window, 0xFFFF) != nullptr;
}

std::wstring DescribeBox(HWND box)
{
    // The icon control is 0x14 on Windows and 0x440 under Wine.
    HWND iconControl = ::GetDlgItem(box, 0x14) != nullptr ? ::GetDlgItem(box, 0x14)
                                                           : ::GetDlgItem(box, 0x440);
    const auto icon = reinterpret_cast<HICON>(::SendMessageW(iconControl, STM_GETICON, 0, 0));
    const wchar_t* iconName = icon == nullptr                               ? L"none"
                              : icon == ::LoadIconW(nullptr, IDI_ERROR)     ? L"error"
                              : icon == ::LoadIconW(nullptr, IDI_QUESTION)  ? L"question"
                                                                            : L"other";
    wchar_t caption[256] = {};
    ::GetWindowTextW(box, caption, 256);
    return std::wstring(caption) + L"|" + ItemText(box, 0xFFFF) + L"|" + iconName +
           (::GetDlgItem(box, IDCANCEL) != nullptr ? L"|ok cancel" : L"|ok");
}

DialogScript::Step ChooseFile(const std::wstring& path)
{
    return [path](HWND dialog) {
        ::SendMessageW(FileNameEdit(dialog), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
        Click(dialog, IDOK);
    };
}

} // namespace testing_support
