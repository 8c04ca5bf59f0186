#pragma once
#include <windows.h>
#include <commdlg.h>

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
    // ...and after: the print font and range, this browser's own from now on.
    void SeedPrintSettings(const LOGFONTW& font, const CHOOSEFONTW& fontDialog,
                           const SYSTEMTIME& from, const SYSTEMTIME& to);

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
    void FreePrinterSettings();

    FileLineSource lines;
    MessageView view;

    // Print settings of this window.
    int printRange = 0;
    SYSTEMTIME rangeFrom = {};
    SYSTEMTIME rangeTo = {};
    HGLOBAL printerDevMode = nullptr;
    HGLOBAL printerDevNames = nullptr;
    LOGFONTW logFontCopy = {};
    CHOOSEFONTW fontDialogStateCopy = {};
};
