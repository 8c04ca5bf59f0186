#include "tools/showmess/AtomSender.h"

namespace {
// A window that does not answer within this time counts as gone.
constexpr UINT kReplyTimeoutMs = 10000;
}

bool AtomSender::Connect(std::string& error)
{
    window_ = ::FindWindowW(kMessageWindowClass, nullptr);
    if (window_ == nullptr) {
        error = "no message window is running (no window of class OrielMessWnd)";
        return false;
    }
    return true;
}

bool AtomSender::Send(const std::wstring& line, std::string& error)
{
    ATOM atom = ::GlobalAddAtomW(line.c_str());
    if (atom == 0) {
        error = "this line cannot be made into a global atom (empty, or over 255 characters)";
        return false;
    }
    // Sent, not posted: the atom has to live until the window has read it.
    DWORD_PTR result = 0;
    LRESULT delivered = ::SendMessageTimeoutW(window_, WM_MESSATOM, atom, 0, SMTO_ABORTIFHUNG,
                                              kReplyTimeoutMs, &result);
    ::GlobalDeleteAtom(atom);
    if (delivered == 0) {
        error = "the message window did not take the message; it has gone or hangs";
        return false;
    }
    if (static_cast<LRESULT>(result) == -1) {
        error = "the message window could not read the atom";
        return false;
    }
    return true;
}
