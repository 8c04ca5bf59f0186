// Answers every message box of the fuzzing thread at once and keeps its
// text for the driver: a box the code under test raises is part of what an
// input does, and a driver may check that a refusal came exactly once.
#include "tools/fuzz/FuzzBoxes.h"

#include "tools/fuzz/FuzzDriver.h"

namespace {

std::vector<std::wstring> boxes;
// The static control that holds a message box's text.
constexpr int kMessageBoxText = 0xFFFF;

LRESULT CALLBACK OnBoxActivation(int code, WPARAM wParam, LPARAM lParam)
{
    HWND box = reinterpret_cast<HWND>(wParam);
    if (code == HCBT_ACTIVATE && ::GetDlgItem(box, kMessageBoxText) != nullptr) {
        wchar_t text[512] = {};
        ::GetDlgItemTextW(box, kMessageBoxText, text, 512);
        boxes.emplace_back(text);
        const int button = ::GetDlgItem(box, IDOK) != nullptr ? IDOK : IDCANCEL;
        ::PostMessageW(box, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                       reinterpret_cast<LPARAM>(::GetDlgItem(box, button)));
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

} // namespace

void AnswerBoxes()
{
    ::SetWindowsHookExW(WH_CBT, OnBoxActivation, nullptr, ::GetCurrentThreadId());
}

void ForgetBoxes()
{
    boxes.clear();
}

const std::vector<std::wstring>& FuzzBoxes()
{
    return boxes;
}
