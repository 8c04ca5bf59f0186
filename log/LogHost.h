#pragma once
#include <windows.h>

// The writer's three timers, each with its period.
enum class LogTimer { Flush, Size, Retention };
constexpr UINT kFlushTimerMs = 1000;
constexpr UINT kSizeTimerMs = 55;
constexpr UINT kRetentionTimerMs = 900000;

// What the log writer needs from the window that owns it: the timers that
// drive it, its message boxes, and two moments the window reacts to.
class LogHost {
public:
    virtual void StartTimer(LogTimer timer, UINT periodMs) = 0;
    virtual void StopTimer(LogTimer timer) = 0;

    // A box owned by the window: string `textId`, the error caption and icon.
    virtual void ShowErrorBox(UINT textId) = 0;
    // An ownerless box with the platform's text for the error `code`.
    virtual void ShowSystemErrorBox(DWORD code) = 0;
    // A full disk has just been met: the window shows its notice before the
    // error box that follows.
    virtual void AnnounceDiskFull() = 0;

    // A new log file is being started: the ring has just been emptied, and
    // the list the window shows with it.  The file has not been switched yet.
    virtual void LogListCleared() = 0;
    // The new log file is the current one now.
    virtual void NewLogFileStarted() = 0;
    // Start-up has opened the current log file and is about to count it.
    virtual void CurrentLogFileOpened() = 0;

protected:
    ~LogHost() = default;
};
