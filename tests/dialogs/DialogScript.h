#pragma once
#include <windows.h>

#include <deque>
#include <functional>
#include <string>

// Talks to the modal dialogs a test runs on its own thread.  Every time a
// modal dialog, message box or common dialog of the thread waits for input,
// the next step runs with that window; steps type, click and check.  When
// the steps are used up, whatever waits is cancelled, so no test hangs.
// Dialogs under test are owned by Owner(), a hidden window of the script.
//
// A modal loop tells its owner each time it waits (WM_ENTERIDLE), except for
// dialogs that ask it not to (DS_NOIDLEMSG, as message boxes do): those wait
// once, when they are first activated.
class DialogScript {
public:
    using Step = std::function<void(HWND window)>;

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
    // Whether every step ran and nothing had to be cancelled.
    bool Finished() const { return steps_.empty() && !cancelled_; }

private:
    static LRESULT CALLBACK IdleHook(int code, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK ActivationHook(int code, WPARAM wParam, LPARAM lParam);
    void OnWaiting(HWND window);

    HWND owner_ = nullptr;
    HHOOK idleHook_ = nullptr;
    HHOOK activationHook_ = nullptr;
    struct Entry {
        std::function<bool(HWND)> ready;
        Step step;
    };
    std::deque<Entry> steps_;
    int waits_ = 0;
    bool cancelled_ = false;
};

// Step helpers.
void Click(HWND dialog, int id);
void Type(HWND dialog, int id, const std::wstring& text);
std::wstring ItemText(HWND dialog, int id);
// A message box: its text is the static control 0xFFFF.
bool IsMessageBox(HWND window);
// A message box as "caption|text|icon|buttons": icon "error", "question",
// "none" or "other"; buttons "ok" or "ok cancel".
std::wstring DescribeBox(HWND box);
