#pragma once
#include <windows.h>
#include <commdlg.h>

#include <vector>

#include "print/PageLayout.h"

// Private messages of the progress dialog: (page, pages) and (copy, copies).
constexpr UINT WM_PRINTPAGE = 3035;
constexpr UINT WM_PRINTCOPY = 3036;

// Flags of the print dialog before a job: the selection preselected, no page
// numbers, collate, a device context back.  The main window also hides the
// print-to-file box; a browser shows it.
constexpr DWORD kBrowserPrintDialogFlags = PD_SELECTION | PD_NOPAGENUMS | PD_COLLATE | PD_RETURNDC;
constexpr DWORD kMainPrintDialogFlags = kBrowserPrintDialogFlags | PD_HIDEPRINTTOFILE;

// Shows the platform's print dialog, owned by `owner`, starting from the
// printer handles a window keeps (either may be null), for one copy.  True
// when the user confirmed: `dialog` then holds the device context, the flags,
// the copies and the printer handles the dialog handed back, all of them the
// caller's to keep or free.
bool RunPrintDialog(HWND owner, HGLOBAL printerDevMode, HGLOBAL printerDevNames, DWORD flags,
                    PRINTDLGW& dialog);

// The windows a job touches.  The main window owns the progress dialog and
// the job's error boxes, also when a browser prints; every window of
// `appWindows` (the main window and each browser) is disabled for the job,
// so that no command starts a second one while the job dispatches messages.
struct PrintJobWindows {
    HWND mainWindow = nullptr;
    std::vector<HWND> appWindows;
};

// Geometry of the job on one printer with one font, in logical units.
struct PrintLayout {
    RECT text = {};
    int lineHeight = 0;
    int linesPerPage = 0;
};

// Measures the print font on the printer's device context (which must be in
// the low-English mapping mode) and leaves the context as it found it.
PrintLayout MeasurePrintLayout(HDC dc, const LOGFONTW& logFont);

// Prints records of the open log `file` (read handle; `path` is printed in
// each page's header): those of the range when the dialog's selection
// choice is set, every record otherwise.  Makes copies and collation itself,
// shows the progress dialog (whose Cancel ends the job after the current
// page), and reports its own failures.  Returns 1 when the document was
// ended normally (a cancelled job included), 0 when nothing was printed or
// the document was aborted.  The caller keeps the device context.
int PrintLog(const PRINTDLGW& printDialog, const LOGFONTW& logFontCopy,
             const CHOOSEFONTW& fontDialogStateCopy, int printRange, const SYSTEMTIME& rangeFrom,
             const SYSTEMTIME& rangeTo, HANDLE file, const wchar_t* path,
             const PrintJobWindows& windows);

// Draws one page: the header line (the log's path and the time of drawing),
// `count` records in their bands, the page label.  Returns the records
// drawn, or -1 when there is none to draw.
int DrawPrintPage(HDC dc, const LOGFONTW& logFont, COLORREF colour, const void* records, int count,
                  const RECT& text, int linesPerPage, int lineHeight, const wchar_t* path,
                  const wchar_t* pageLabel);
