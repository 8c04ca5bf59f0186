// What the soak script cannot do from the Unix side:
//   soak_helper wait CLASS [TIMEOUT_MS]   exit 0 once a top-level window of
//                                         CLASS exists, 1 after the time
//   soak_helper flood CLASS SECONDS       keeps that window's queue busy
//   soak_helper boxes CLASS [QUIET_MS [ALLOWED_ERROR]]
//                                         answers every message box of the
//                                         window's process until none came
//                                         for QUIET_MS (1000) or the process
//                                         ended, prints their texts; exit 1
//                                         when there was one other than the
//                                         system's text of ALLOWED_ERROR
// A flood of posted no-op messages holds back WM_TIMER, which the platform
// makes only when the queue is empty: the load under which flat-out senders
// leave more than 5000 lines unflushed, made certain on a slow machine.
#include <windows.h>

#include <cstdio>
#include <cwchar>
#include <string>

#include "tests/support/OutsideBoxes.h"

namespace {

HWND WaitForWindow(const wchar_t* className, DWORD timeoutMs)
{
    const DWORD start = ::GetTickCount();
    HWND window;
    while ((window = ::FindWindowW(className, nullptr)) == nullptr) {
        if (::GetTickCount() - start >= timeoutMs)
            return nullptr;
        ::Sleep(50);
    }
    return window;
}

constexpr DWORD kFloodThreads = 3;

struct Flood {
    HWND window;
    DWORD end;
};

DWORD WINAPI PostNoOps(void* context)
{
    const Flood* flood = static_cast<const Flood*>(context);
    while (static_cast<LONG>(flood->end - ::GetTickCount()) > 0) {
        if (!::PostMessageW(flood->window, WM_NULL, 0, 0))
            ::Sleep(1);
    }
    return 0;
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    if (argc < 3)
        return 2;
    const std::wstring command = argv[1];
    const DWORD number = argc > 3 ? static_cast<DWORD>(std::wcstoul(argv[3], nullptr, 10)) : 0;
    if (command == L"wait")
        return WaitForWindow(argv[2], number != 0 ? number : 20000) != nullptr ? 0 : 1;
    HWND window = WaitForWindow(argv[2], 0);
    if (command == L"boxes") {
        DWORD processId = 0;
        ::GetWindowThreadProcessId(window, &processId);
        const std::vector<ProcessBox> boxes =
            window != nullptr ? AnswerBoxes(processId, number != 0 ? number : 1000)
                              : std::vector<ProcessBox>();
        const std::wstring allowed = argc > 4 ? SystemErrorText(std::wcstoul(argv[4], nullptr, 10)) : L"";
        int designed = 0;
        int unexpected = 0;
        for (const ProcessBox& box : boxes) {
            if (!allowed.empty() && box.text == allowed) {
                ++designed;
                continue;
            }
            char text[2048] = {};
            ::WideCharToMultiByte(CP_UTF8, 0, box.text.c_str(), -1, text, sizeof text - 1, nullptr,
                                  nullptr);
            std::printf("  message box: %s\n", text);
            ++unexpected;
        }
        if (designed > 0)
            std::printf("  %d designed error boxes (error %lu)\n", designed, std::wcstoul(argv[4], nullptr, 10));
        return unexpected == 0 ? 0 : 1;
    }
    if (command != L"flood" || window == nullptr)
        return 2;
    // Several posting threads, so that the queue stays ahead of the window
    // even when one of them waits for the processor.
    Flood flood{window, ::GetTickCount() + number * 1000};
    HANDLE threads[kFloodThreads];
    for (HANDLE& thread : threads)
        thread = ::CreateThread(nullptr, 0, &PostNoOps, &flood, 0, nullptr);
    ::WaitForMultipleObjects(kFloodThreads, threads, TRUE, INFINITE);
    return 0;
}
