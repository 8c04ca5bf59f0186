#pragma once
#include <windows.h>

#include <string>
#include <vector>

// The message boxes of another process, seen from outside: top-level dialog
// windows of that process with a static text 0xFFFF, found by enumerating
// the desktop's windows, their texts without trailing line breaks.  A box
// is answered by posting it a click on OK.
struct ProcessBox {
    HWND window;
    std::wstring text;
    std::wstring caption;
    HWND owner;
};

// The boxes of process `processId` open now, newest first.
std::vector<ProcessBox> OpenBoxes(DWORD processId);

// Waits up to `timeoutMs` for a box of the process that is not in `seen`;
// returns it without answering it, or a box with a null window.
ProcessBox WaitForNewBox(DWORD processId, const std::vector<HWND>& seen, DWORD timeoutMs);

void PressOk(const ProcessBox& box);

// Answers every box of the process, each as it appears, until none has come
// for `quietMs` (or the process has ended); the boxes in the order answered.
std::vector<ProcessBox> AnswerBoxes(DWORD processId, DWORD quietMs);

// The platform's text for an error code, as the program's error box shows it.
std::wstring SystemErrorText(DWORD code);
