#pragma once
#include <windows.h>

#include "msgwnd/MessAtom.h"
#include "tools/showmess/LineSender.h"

// The window class of the message window (string 102 of its language modules).
constexpr wchar_t kMessageWindowClass[] = L"OrielMessWnd";

// The atom road: each line becomes a global atom that the window reads while
// it handles the message sent to it; the atom is deleted afterwards.
class AtomSender : public LineSender {
public:
    // False, with `error` set, when no message window runs.
    bool Connect(std::string& error);
    bool Send(const std::wstring& line, std::string& error) override;

private:
    HWND window_ = nullptr;
};
