#pragma once
#include <windows.h>

// What the log writer needs from the main window.  The window owns the
// timers, the message boxes and the view's page; the writer only asks.
class LogHost {
public:
    virtual void StartTimer(UINT_PTR id, UINT periodMs) = 0;
    virtual void StopTimer(UINT_PTR id) = 0;

    // A box owned by the main window: string `textId`, caption string 107,
    // error icon.
    virtual void ShowErrorBox(UINT textId) = 0;
    // A box with no owner showing the platform's text for a file error
    // (`text` may be null when the platform has none).
    virtual void ShowSystemErrorBox(const wchar_t* text, const wchar_t* caption) = 0;

    // Sends the main window its atom message with both parameters 0, so the
    // intake handler adds the disk-full notice before the error box appears.
    virtual void AnnounceDiskFull() = 0;

    // A new log file has started: the page and the horizontal position are
    // cleared (the page buffer zero-filled when there is one).
    virtual void ClearViewForNewFile() = 0;
    // After the switch to the new file: refill the page and repaint the
    // client area, when the view has a page.
    virtual void RefreshViewForNewFile() = 0;
    // Start-up has opened the current log file: forget the page (the first
    // size change allocates it) and the horizontal position.
    virtual void DropViewPage() = 0;

protected:
    ~LogHost() = default;
};
