#pragma once
#include <windows.h>
#include <commdlg.h>
#include <memory>

#include "log/LogHost.h"
#include "log/LogWriter.h"
#include "msgwnd/MessageRing.h"
#include "winlayer/WindowImpl.h"

// The private message that carries a line as a global atom.
constexpr UINT WM_MESSATOM = WM_USER + 50;

// The one main window of the process: frame, settings, the ring of recent
// lines, the log writer and the message view over the current log.
// The object is large (the ring is inline) and lives as a static object.
class CMessWnd : public winlayer::WindowImpl<CMessWnd>, public AddedLineView, public LogHost {
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
    int AddMessage(const wchar_t* text) { return ring.AddMessage(text); }

    // Shown by the About dialog; owned by start-up.
    void SetAboutText(const wchar_t* text) { aboutText = text; }

    // Read access for tests and the benchmark.
    const MessageRing& Ring() const { return ring; }
    const LogWriter& Writer() const { return writer; }
    LogWriter& Writer() { return writer; }
    int LinesPerPage() const { return linesPerPage; }
    int PageCount() const { return pageCount; }
    const MessageRecord* Page() const { return pageBuffer.get(); }
    int HorizontalPosition() const { return hPos; }

    // Handlers (message and command table).
    LRESULT OnSize(WPARAM, LPARAM, bool& handled);
    LRESULT OnAbout(WPARAM, LPARAM, bool& handled);
    LRESULT OnFont(WPARAM, LPARAM, bool& handled);
    LRESULT OnSaveDirectory(WPARAM, LPARAM, bool& handled);
    LRESULT OnSaveParams(WPARAM, LPARAM, bool& handled);
    LRESULT OnOpenLog(WPARAM, LPARAM, bool& handled);
    LRESULT OnPrint(WPARAM, LPARAM, bool& handled);
    LRESULT OnPrintSetup(WPARAM, LPARAM, bool& handled);
    LRESULT OnExportText(WPARAM, LPARAM, bool& handled);
    LRESULT OnPaint(WPARAM, LPARAM, bool& handled);
    LRESULT OnAtomMessage(WPARAM, LPARAM, bool& handled);
    LRESULT OnDestroy(WPARAM, LPARAM, bool& handled);
    LRESULT OnTimer(WPARAM, LPARAM, bool& handled);
    LRESULT OnCreate(WPARAM, LPARAM, bool& handled);
    LRESULT OnVScroll(WPARAM, LPARAM, bool& handled);
    LRESULT OnKeyDown(WPARAM, LPARAM, bool& handled);
    LRESULT OnSysCommand(WPARAM, LPARAM, bool& handled);
    LRESULT OnHScroll(WPARAM, LPARAM, bool& handled);

    // The view.
    void RefreshPage();
    void ShowAddedLine() override;
    void UpdateHorizontalExtent();

private:
    // LogHost: what the log writer asks of the window.
    void StartTimer(UINT_PTR id, UINT periodMs) override;
    void StopTimer(UINT_PTR id) override;
    void ShowErrorBox(UINT textId) override;
    void ShowSystemErrorBox(const wchar_t* text, const wchar_t* caption) override;
    void AnnounceDiskFull() override;
    void ClearViewForNewFile() override;
    void RefreshViewForNewFile() override;
    void DropViewPage() override;

    // Creation steps.
    void ReadSettings(wchar_t* directory, wchar_t* name);
    void SetUpFonts();
    void AddTopmostItem();
    void PlaceFirstTopLine();

    // View steps.
    void FillPageFromRing();
    void FillPageFromFile();
    void AppendUnwrittenRecords();
    void SetVerticalBar(int position);
    void SetHorizontalBar(int position);
    void ApplyVerticalRequest(int request);
    void ApplyHorizontalRequest(int request, int thumb);
    void InvalidateAll();

    MessageRing ring;
    LogWriter writer;

    wchar_t settingsPath[MAX_PATH] = {};
    LOGFONTW logFont = {};
    CHOOSEFONTW fontDialogState = {};
    LOGFONTW logFontCopy = {};
    CHOOSEFONTW fontDialogStateCopy = {};
    const wchar_t* aboutText = L"";

    // Print settings, kept for the window's life.
    HGLOBAL printerDevMode = nullptr;
    HGLOBAL printerDevNames = nullptr;
    SYSTEMTIME rangeFrom = {};
    SYSTEMTIME rangeTo = {};
    int printRange = 0;

    // View state (topLine and lineCount live in the ring).
    HFONT viewFont = nullptr;
    int lineHeight = 0;
    int linesPerPage = 0;
    std::unique_ptr<MessageRecord[]> pageBuffer;
    int pageCount = 0;
    int hExtent = 0;
    int hPage = 0;
    int hPos = 0;
    int hStep = 0;
};
