#pragma once
#include <windows.h>
#include <commdlg.h>

#include <memory>
#include <vector>

#include "browse/BrowseWnd.h"
#include "log/LogHost.h"
#include "log/LogWriter.h"
#include "msgwnd/MessAtom.h"
#include "print/PrintJob.h"
#include "print/PrintSettings.h"
#include "ring/MessageRing.h"
#include "server/LineSink.h"
#include "settings/SaveSettings.h"
#include "view/LiveLineSource.h"
#include "view/MessageView.h"
#include "winlayer/WindowImpl.h"

// The one main window of the process: the frame with its command table,
// the ring of recent lines, the log writer, and the message view over the
// current log.  The object is large (the ring is inline) and lives as a
// static object.
class CMessWnd : public winlayer::WindowImpl<CMessWnd>, public LineSink, private LogHost {
public:
    CMessWnd();
    ~CMessWnd() override;

    static winlayer::MessageTable<CMessWnd> Messages();

    // The main window's class: its procedure, the icon, style 0x3028, the
    // window background and the arrow cursor.
    static ATOM RegisterClass(HINSTANCE instance, const wchar_t* className, HICON icon);
    // Creates the window as start-up does (overlapped with a vertical scroll
    // bar, edged, default position and size unless `bounds` is given).
    HWND CreateMainWindow(HINSTANCE instance, const wchar_t* className, const wchar_t* title,
                          HMENU menu, const RECT* bounds = nullptr);

    // Entry of every line, from either intake road: stamps it, stores it in
    // the ring and shows it.  Always 1.
    int AddMessage(const wchar_t* text) override { return ring.AddMessage(text); }

    // Shown by the About dialog; owned by start-up.
    void SetAboutText(const wchar_t* text) { aboutText = text; }
    // The suite's window icon file, for the browsers; owned by start-up.
    void SetIconFileName(const wchar_t* name) { iconFileName = name; }

    // Read access for tests and the benchmark.
    const MessageRing& Ring() const { return ring; }
    const LogWriter& Writer() const { return writer; }
    LogWriter& Writer() { return writer; }
    const MessageView& View() const { return view; }
    const std::vector<std::unique_ptr<CBrowseWnd>>& Browsers() const { return browserWindows; }

private:
    LRESULT OnCreate(WPARAM, LPARAM, bool& handled);
    LRESULT OnAbout(WPARAM, LPARAM, bool& handled);
    LRESULT OnFont(WPARAM, LPARAM, bool& handled);
    LRESULT OnSaveDirectory(WPARAM, LPARAM, bool& handled);
    LRESULT OnSaveParams(WPARAM, LPARAM, bool& handled);
    LRESULT OnOpenLog(WPARAM, LPARAM, bool& handled);
    LRESULT OnPrint(WPARAM, LPARAM, bool& handled);
    LRESULT OnPrintSetup(WPARAM, LPARAM, bool& handled);
    LRESULT OnExportText(WPARAM, LPARAM, bool& handled);
    LRESULT OnAtomMessage(WPARAM, LPARAM, bool& handled);
    LRESULT OnDestroy(WPARAM, LPARAM, bool& handled);
    LRESULT OnTimer(WPARAM, LPARAM, bool& handled);
    LRESULT OnSysCommand(WPARAM, LPARAM, bool& handled);

    // LogHost: what the log writer asks of the window, and the view's
    // reactions to the log's list.
    void StartTimer(LogTimer timer, UINT periodMs) override;
    void StopTimer(LogTimer timer) override;
    void ShowErrorBox(UINT textId) override;
    void ShowSystemErrorBox(DWORD code) override;
    void AnnounceDiskFull() override;
    void LogListCleared() override;
    void NewLogFileStarted() override;
    void CurrentLogFileOpened() override;

    // The main window and every browser that has a window: what a print
    // job disables, and the owner of its dialogs.
    PrintJobWindows AppWindows() const;

    // Creation steps.
    void SetUpFonts();
    void AddTopmostItem();

    SettingsFile settingsFile;
    MessageRing ring;
    LogWriter writer;
    LiveLineSource liveLines;
    MessageView view;

    LOGFONTW logFont = {};
    CHOOSEFONTW fontDialogState = {};
    HFONT viewFont = nullptr;
    const wchar_t* aboutText = L"";
    const wchar_t* iconFileName = L"";

    // Every browser opened, in order, kept until the end of the process.
    std::vector<std::unique_ptr<CBrowseWnd>> browserWindows;

    // Print settings with the print font (logFontCopy, fontDialogStateCopy),
    // kept for the window's life.
    PrintSettings printSettings;
};
