#pragma once
#include <windows.h>

// The shared window code tells of trouble in message boxes.  A console
// tool run from a script must not stop at one, so while this object lives,
// every message box the calling thread raises is written to standard error
// ("qxltool: <caption>: <text>") and closed at once.
class BoxesToStderr {
public:
    BoxesToStderr();
    ~BoxesToStderr();
    BoxesToStderr(const BoxesToStderr&) = delete;
    BoxesToStderr& operator=(const BoxesToStderr&) = delete;

    int Count() const { return count_; }

private:
    static LRESULT CALLBACK HookProc(int code, WPARAM wParam, LPARAM lParam);

    HHOOK hook_ = nullptr;
    int count_ = 0;
};
