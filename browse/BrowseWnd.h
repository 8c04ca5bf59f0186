#pragma once
#include <windows.h>
#include <commdlg.h>

#include <functional>

#include "print/PrintJob.h"
#include "print/PrintSettings.h"
#include "view/FileLineSource.h"
#include "view/MessageView.h"
#include "winlayer/WindowImpl.h"

// A window that shows one saved log file, read from the file alone, and
// follows its growth.  It scrolls, paints and answers keys through the same
// view as the main window.  The object outlives its window: the main window
// keeps it until the end of the process.
class CBrowseWnd : public winlayer::WindowImpl<CBrowseWnd> {
public:
    CBrowseWnd();
    ~CBrowseWnd() override;

    static winlayer::MessageTable<CBrowseWnd> Messages();

    // The browsers' window class, registered at the first opening only.
    static void RegisterClassOnce(HICON icon);
    // Creates the window: top level, default place and size, `caption`,
    // `menu`.  Null when creation failed.
    HWND CreateBrowser(const wchar_t* caption, HMENU menu);

    // What the opening copies in before the window is made.
    void SetTextColor(COLORREF color) { view.SetTextColor(color); }
    // The main window's font itself: shared, never deleted here.
    void SetViewFont(HFONT font) { view.SetFont(font); }
    void SetFilePath(const wchar_t* path) { lines.SetPath(path); }
    // ...and after: the print font and range times, this browser's own from
    // now on (the range kind starts at "all", the printer at the default).
    void SeedPrintSettings(const PrintSettings& mainWindow);
    // Who a print job disables and who owns its dialogs: the main window
    // knows the application's windows.
    void SetAppWindows(std::function<PrintJobWindows()> appWindows)
    {
        appWindows_ = std::move(appWindows);
    }

    const FileLineSource& Lines() const { return lines; }
    const MessageView& View() const { return view; }

private:
    LRESULT OnCreate(WPARAM, LPARAM, bool& handled);
    LRESULT OnTimer(WPARAM, LPARAM, bool& handled);
    LRESULT OnDestroy(WPARAM, LPARAM, bool& handled);
    LRESULT OnPrint(WPARAM, LPARAM, bool& handled);
    LRESULT OnPrintSetup(WPARAM, LPARAM, bool& handled);
    LRESULT OnExportText(WPARAM, LPARAM, bool& handled);
    LRESULT OnClose(WPARAM, LPARAM, bool& handled);

    // Opens the file, checks its header, takes its record count and closes
    // it again: 0, or -1 after a failure.  While `following`, a failure also
    // stops the follow timer, before its report.
    int CountRecords(bool following);

    FileLineSource lines;
    MessageView view;

    PrintSettings printSettings;
    std::function<PrintJobWindows()> appWindows_;
};
