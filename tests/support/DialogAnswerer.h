#pragma once
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace testing_support {

// Answers the dialogs (message boxes aside) that the calling thread shows
// while it lives: each one, as it is activated, goes to the next answer in
// turn.  Dialogs beyond the answers are cancelled, so no test hangs on one.
class DialogAnswerer {
public:
    using Answer = std::function<void(HWND dialog)>;
    explicit DialogAnswerer(std::vector<Answer> answers);
    ~DialogAnswerer();
    DialogAnswerer(const DialogAnswerer&) = delete;
    DialogAnswerer& operator=(const DialogAnswerer&) = delete;

    size_t Shown() const { return shown_; }

private:
    static LRESULT CALLBACK HookProc(int code, WPARAM wParam, LPARAM lParam);

    HHOOK hook_ = nullptr;
    std::vector<Answer> answers_;
    size_t shown_ = 0;
};

// Types `path` into a file dialog's name box and confirms.
DialogAnswerer::Answer ChooseFile(const std::wstring& path);
// Presses Cancel.
void CancelDialog(HWND dialog);
// Presses the button `id` by posting its click.
void ClickButton(HWND dialog, int id);

} // namespace testing_support
