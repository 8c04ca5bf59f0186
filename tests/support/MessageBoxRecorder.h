#pragma once
#include <windows.h>
#include <string>
#include <vector>

namespace testing_support {

// Answers every message box the calling thread raises while it lives: the
// box's text and caption are recorded and the box is closed with OK (or
// Cancel when it has no OK button), so no test ever hangs on one.
class MessageBoxRecorder {
public:
    struct Box {
        std::wstring text;
        std::wstring caption;
        HWND owner;
    };

    MessageBoxRecorder();
    ~MessageBoxRecorder();
    MessageBoxRecorder(const MessageBoxRecorder&) = delete;
    MessageBoxRecorder& operator=(const MessageBoxRecorder&) = delete;

    const std::vector<Box>& Boxes() const { return boxes_; }
    void Clear() { boxes_.clear(); }

private:
    static LRESULT CALLBACK HookProc(int code, WPARAM wParam, LPARAM lParam);

    HHOOK hook_ = nullptr;
    std::vector<Box> boxes_;
};

} // namespace testing_support
