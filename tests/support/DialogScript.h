#pragma once
#include <windows.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace testing_support {

// Talks to the modal dialogs, message boxes and popup menus that the
// creating thread runs while the script lives.  Every time one of them waits
// for input, the next step runs on that thread with its window; steps type,
// click and check, and a step's own clicks may open the next dialog, so
// dialogs opened from dialogs and boxes raised by them follow in order.
// Every message box is recorded.  When the steps are used up, a message box
// is answered with OK (Cancel when it has none) and anything else is
// cancelled, so no test hangs.
//
// A modal loop tells its owner each time it waits (WM_ENTERIDLE), so the
// dialogs need an owner (Owner() serves); dialogs that ask not to be told
// (DS_NOIDLEMSG, as message boxes do) wait once, when first activated.
class DialogScript {
public:
    using Step = std::function<void(HWND window)>;
    struct Box {
        std::wstring text;
        std::wstring caption;
        HWND owner;
    };

    DialogScript();
    ~DialogScript();
    DialogScript(const DialogScript&) = delete;
    DialogScript& operator=(const DialogScript&) = delete;

    HWND Owner() const { return owner_; }
    DialogScript& Then(Step step);
    // A step that waits until `ready` says the window is ready for it, for a
    // few seconds at most; `ready` may also retry something that does not
    // always take the first time.
    DialogScript& ThenWhen(std::function<bool(HWND window)> ready, Step step);
    // Whether every step ran and no dialog had to be cancelled.
    bool Finished() const { return steps_.empty() && !cancelled_; }
    const std::vector<Box>& Boxes() const { return boxes_; }
    void Clear() { boxes_.clear(); }

private:
    static LRESULT CALLBACK IdleHook(int code, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK ActivationHook(int code, WPARAM wParam, LPARAM lParam);
    void OnWaiting(HWND window);

    HWND owner_ = nullptr;
    DialogScript* outer_ = nullptr;
    HHOOK idleHook_ = nullptr;
    HHOOK activationHook_ = nullptr;
    struct Entry {
        std::function<bool(HWND)> ready;
        Step step;
    };
    std::deque<Entry> steps_;
    std::vector<Box> boxes_;
    int waits_ = 0;
    bool cancelled_ = false;
};

// Step helpers.  Clicks are posted: they need no focus and take effect once
// the step has returned.
void Click(HWND dialog, int id);
void Type(HWND dialog, int id, const std::wstring& text);
std::wstring ItemText(HWND dialog, int id);
// A message box: its text is the static control 0xFFFF.
bool IsMessageBox(HWND window);
// A message box as "caption|text|icon|buttons": icon "error", "question",
// "none" or "other"; buttons "ok" or "ok cancel".
std::wstring DescribeBox(HWND box);
// Types `path` into a file dialog's name box and confirms.
DialogScript::Step ChooseFile(const std::wstring& path);

} // namespace testing_support
