#include "OutsideBoxes.h"
#include "TestFiles.h"

#include <algorithm>

namespace {

// A static control may keep the text's line breaks; the texts compared are without them.
std::wstring Trimmed(std::wstring text)
{
    while (!text.empty() && (text.back() == L'\r' || text.back() == L'\n' || text.back() == L' '))
        text.pop_back();
    return text;
}

bool ProcessEnded(DWORD processId)
{
    HANDLE process = ::OpenProcess(SYNCHRONIZE, FALSE, processId);
    if (process == nullptr)
        return true;
    const bool ended = ::WaitForSingleObject(process, 0) == WAIT_OBJECT_0;
    ::CloseHandle(process);
    return ended;
}

} // namespace

std::vector<ProcessBox> OpenBoxes(DWORD processId)
{
    std::vector<ProcessBox> boxes;
    for (HWND window : testing_support::WindowsOf(processId, L"#32770")) {
        // A box being closed is hidden first; it no longer counts.
        if (!::IsWindowVisible(window) || ::GetDlgItem(window, 0xFFFF) == nullptr)
            continue;
        wchar_t text[1024] = {};
        wchar_t caption[256] = {};
        ::GetDlgItemTextW(window, 0xFFFF, text, 1024);
        ::GetWindowTextW(window, caption, 256);
        boxes.push_back({window, Trimmed(text), caption, ::GetWindow(window, GW_OWNER)});
    }
    return boxes;
}

ProcessBox WaitForNewBox(DWORD processId, const std::vector<HWND>& seen, DWORD timeoutMs)
{
    const DWORD start = ::GetTickCount();
    do {
        for (const ProcessBox& box : OpenBoxes(processId)) {
            if (std::find(seen.begin(), seen.end(), box.window) == seen.end())
                return box;
        }
        ::Sleep(20);
    } while (::GetTickCount() - start < timeoutMs);
    return ProcessBox{nullptr, L"", L"", nullptr};
}

void PressOk(const ProcessBox& box)
{
    const int button = ::GetDlgItem(box.window, IDOK) != nullptr ? IDOK : IDCANCEL;
    ::PostMessageW(box.window, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                   reinterpret_cast<LPARAM>(::GetDlgItem(box.window, button)));
}

std::vector<ProcessBox> AnswerBoxes(DWORD processId, DWORD quietMs)
{
    std::vector<ProcessBox> answered;
    std::vector<HWND> seen;
    for (;;) {
        ProcessBox box = WaitForNewBox(processId, seen, quietMs);
        if (box.window == nullptr || ProcessEnded(processId))
            return answered;
        seen.push_back(box.window);
        answered.push_back(box);
        PressOk(box);
    }
}

std::wstring SystemErrorText(DWORD code)
{
    wchar_t* text = nullptr;
    ::FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                         FORMAT_MESSAGE_IGNORE_INSERTS,
                     nullptr, code, MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT),
                     reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    std::wstring result = text != nullptr ? text : L"";
    ::LocalFree(text);
    return Trimmed(result);
}
