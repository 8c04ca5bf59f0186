#include "support/DialogAnswerer.h"

namespace testing_support {

namespace {

DialogAnswerer* active = nullptr;

// The explorer-style file dialog keeps its name box, an edit, inside the
// combo box 0x47C.
HWND FileNameEdit(HWND dialog)
{
    HWND combo = ::GetDlgItem(dialog, 0x47C);
    HWND edit = combo != nullptr ? ::FindWindowExW(combo, nullptr, L"Edit", nullptr) : nullptr;
    if (edit == nullptr) {
        // The combo box may sit one level down, in the dialog's own child.
        ::EnumChildWindows(
            dialog,
            [](HWND child, LPARAM found) {
                if (::GetDlgCtrlID(child) != 0x47C)
                    return TRUE;
                *reinterpret_cast<HWND*>(found) = ::FindWindowExW(child, nullptr, L"Edit", nullptr);
                return FALSE;
            },
            reinterpret_cast<LPARAM>(&edit));
    }
    return edit != nullptr ? edit : combo;
}

} // namespace

DialogAnswerer::DialogAnswerer(std::vector<Answer> answers) : answers_(std::move(answers))
{
    active = this;
    hook_ = ::SetWindowsHookExW(WH_CBT, &DialogAnswerer::HookProc, nullptr, ::GetCurrentThreadId());
}

DialogAnswerer::~DialogAnswerer()
{
    ::UnhookWindowsHookEx(hook_);
    active = nullptr;
}

LRESULT CALLBACK DialogAnswerer::HookProc(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HCBT_ACTIVATE && active != nullptr) {
        HWND dialog = reinterpret_cast<HWND>(wParam);
        wchar_t className[16] = {};
        ::GetClassNameW(dialog, className, 16);
        const bool messageBox = ::GetDlgItem(dialog, 0xFFFF) != nullptr;
        // Each dialog is answered once, on its first activation.
        if (std::wstring(className) == L"#32770" && !messageBox &&
            ::GetPropW(dialog, L"OrielTestAnswered") == nullptr) {
            ::SetPropW(dialog, L"OrielTestAnswered", reinterpret_cast<HANDLE>(1));
            const size_t turn = active->shown_++;
            if (turn < active->answers_.size())
                active->answers_[turn](dialog);
            else
                CancelDialog(dialog);
        }
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

void ClickButton(HWND dialog, int id)
{
    ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                   reinterpret_cast<LPARAM>(::GetDlgItem(dialog, id)));
}

void CancelDialog(HWND dialog)
{
    ClickButton(dialog, IDCANCEL);
}

DialogAnswerer::Answer ChooseFile(const std::wstring& path)
{
    return [path](HWND dialog) {
        ::SendMessageW(FileNameEdit(dialog), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
        ClickButton(dialog, IDOK);
    };
}

} // namespace testing_support
