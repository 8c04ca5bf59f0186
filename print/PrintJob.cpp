#include "print/PrintJob.h"

#include <memory>
#include <new>

#include "lang/ResourceIds.h"
#include "msgwnd/MessageRecord.h"
#include "msgwnd/RecordLine.h"
#include "print/FileErrorBox.h"
#include "print/PrintRecords.h"
#include "winlayer/Resources.h"

namespace {

// One job at a time: what the abort procedure and the progress dialog share.
bool printCancelled = false;
HWND abortDialog = nullptr;

constexpr wchar_t kDocumentName[] = L"MyPrintDoc";
constexpr int kPageLabelUnits = 1024;
constexpr int kHeaderUnits = 1024;

// Lets the user's Cancel and every other queued message through while the
// spooler works; a false result tells the printer to give up.
BOOL CALLBACK PrintAbortProc(HDC, int)
{
    MSG message;
    while (!printCancelled && ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (abortDialog != nullptr && ::IsDialogMessageW(abortDialog, &message))
            continue;
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    return !printCancelled;
}

void ShowProgressLine(HWND dialog, UINT formatId, int control, WPARAM current, LPARAM total)
{
    wchar_t format[128];
    wchar_t line[256];
    winlayer::LoadText(formatId, format, 128);
    winlayer::FormatText(line, 256, format, static_cast<int>(current), static_cast<int>(total));
    ::SetDlgItemTextW(dialog, control, line);
}

INT_PTR CALLBACK PrintAbortDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_INITDIALOG:
        // Closing is the Cancel button's business alone.
        ::EnableMenuItem(::GetSystemMenu(dialog, FALSE), SC_CLOSE, MF_GRAYED);
        return TRUE;
    case WM_COMMAND:
        printCancelled = true;
        ::ShowWindow(dialog, SW_HIDE);
        return TRUE;
    case WM_PRINTPAGE:
        ShowProgressLine(dialog, IDS_PRINT_PAGE_PROGRESS, IDC_PRINT_PAGE_LINE, wParam, lParam);
        return TRUE;
    case WM_PRINTCOPY:
        ShowProgressLine(dialog, IDS_PRINT_COPY_PROGRESS, IDC_PRINT_COPY_LINE, wParam, lParam);
        return TRUE;
    default:
        return FALSE;
    }
}

void EnableAppWindows(const PrintJobWindows& windows, bool enable)
{
    for (HWND window : windows.appWindows)
        ::EnableWindow(window, enable ? TRUE : FALSE);
}

void DisableAppWindows(const PrintJobWindows& windows)
{
    EnableAppWindows(windows, false);
}

void EnableAppWindows(const PrintJobWindows& windows)
{
    EnableAppWindows(windows, true);
}

// A job message owned by the main window (caption string 32785).
void ShowJobError(const PrintJobWindows& windows, const wchar_t* caption, const wchar_t* text)
{
    ::MessageBoxW(windows.mainWindow, text, caption, MB_ICONERROR);
}

PrinterMetrics MetricsOf(HDC dc)
{
    PrinterMetrics printer;
    printer.horzRes = ::GetDeviceCaps(dc, HORZRES);
    printer.vertRes = ::GetDeviceCaps(dc, VERTRES);
    printer.pixelsPerInchX = ::GetDeviceCaps(dc, LOGPIXELSX);
    printer.pixelsPerInchY = ::GetDeviceCaps(dc, LOGPIXELSY);
    return printer;
}

} // namespace

bool RunPrintDialog(HWND owner, HGLOBAL printerDevMode, HGLOBAL printerDevNames, DWORD flags,
                    PRINTDLGW& dialog)
{
    dialog = PRINTDLGW{};
    dialog.lStructSize = sizeof(PRINTDLGW);
    dialog.hwndOwner = owner;
    dialog.hDevMode = printerDevMode;
    dialog.hDevNames = printerDevNames;
    dialog.Flags = flags;
    dialog.nCopies = 1;
    return ::PrintDlgW(&dialog) != FALSE;
}

PrintLayout MeasurePrintLayout(HDC dc, const LOGFONTW& logFont)
{
    const PrinterMetrics printer = MetricsOf(dc);
    PrintLayout layout;
    layout.text = PrintTextRect(printer);
    HFONT font = ::CreateFontIndirectW(&logFont);
    HGDIOBJ oldFont = ::SelectObject(dc, font);
    TEXTMETRICW metrics = {};
    ::GetTextMetricsW(dc, &metrics);
    ::SelectObject(dc, oldFont);
    ::DeleteObject(font);
    layout.lineHeight = metrics.tmHeight + metrics.tmExternalLeading;
    layout.linesPerPage = PrintLinesPerPage(printer, layout.lineHeight);
    return layout;
}

int DrawPrintPage(HDC dc, const LOGFONTW& logFont, COLORREF colour, const void* records, int count,
                  const RECT& text, int linesPerPage, int lineHeight, const wchar_t* path,
                  const wchar_t* pageLabel)
{
    if (count < 1)
        return -1;
    // A new page may come with the device context's defaults again.
    ::SetMapMode(dc, MM_LOENGLISH);
    HFONT font = ::CreateFontIndirectW(&logFont);
    HGDIOBJ oldFont = ::SelectObject(dc, font);
    const COLORREF oldColour = ::SetTextColor(dc, colour);

    SYSTEMTIME now;
    ::GetLocalTime(&now);
    wchar_t format[kHeaderUnits];
    wchar_t header[kHeaderUnits];
    winlayer::LoadText(IDS_PRINT_HEADER, format, kHeaderUnits);
    winlayer::FormatText(header, kHeaderUnits, format, path, now.wYear, now.wMonth, now.wDay,
                         now.wHour, now.wMinute, now.wSecond);
    RECT band = HeaderBand(text, lineHeight);
    ::DrawTextW(dc, header, -1, &band, DT_SINGLELINE | DT_EXTERNALLEADING);

    const auto* page = static_cast<const MessageRecord*>(records);
    const RecordLineFormatter formatter;
    wchar_t line[kRecordLineBuffer];
    int drawn = 0;
    for (; drawn < count && drawn < linesPerPage; ++drawn) {
        const int length = formatter.Format(line, page[drawn]);
        band = RecordBand(text, lineHeight, drawn);
        ::DrawTextW(dc, line, length, &band, DT_EXTERNALLEADING);
    }

    band = PageLabelBand(text, lineHeight);
    ::DrawTextW(dc, pageLabel, -1, &band, DT_RIGHT | DT_SINGLELINE | DT_EXTERNALLEADING);

    ::SetTextColor(dc, oldColour);
    ::SelectObject(dc, oldFont);
    ::DeleteObject(font);
    return drawn;
}

int PrintLog(const PRINTDLGW& printDialog, const LOGFONTW& logFontCopy,
             const CHOOSEFONTW& fontDialogStateCopy, int printRange, const SYSTEMTIME& rangeFrom,
             const SYSTEMTIME& rangeTo, HANDLE file, const wchar_t* path,
             const PrintJobWindows& windows)
{
    wchar_t caption[64];
    winlayer::LoadText(IDS_PRINT_CAPTION, caption, 64);
    HDC dc = printDialog.hDC;
    if (dc == nullptr)
        return 0;
    if (::SetMapMode(dc, MM_LOENGLISH) == 0) {
        ReportFileErrorWithoutWindow();
        return 0;
    }
    // "All" in the print dialog overrides the range of the print setup.
    if ((printDialog.Flags & PD_SELECTION) == 0)
        printRange = RangeAll;

    int first = -1;
    int last = -1;
    if (!SelectPrintRecords(file, printRange, rangeFrom, rangeTo, &first, &last))
        return 0;
    if (first < 0 || last < 0 || first > last) {
        wchar_t text[256];
        winlayer::LoadText(IDS_PRINT_NOTHING_IN_RANGE, text, 256);
        ::MessageBoxW(nullptr, text, caption, MB_ICONINFORMATION);
        return 0;
    }
    const bool collate = (printDialog.Flags & PD_COLLATE) != 0;
    const CopyPlan copies = PlanCopies(collate, printDialog.nCopies);

    HWND focusAfterwards = ::GetTopWindow(windows.mainWindow);
    DisableAppWindows(windows);
    ::SetAbortProc(dc, &PrintAbortProc);
    printCancelled = false;
    abortDialog = ::CreateDialogParamW(winlayer::ResourceModule(),
                                       MAKEINTRESOURCEW(IDD_PRINT_PROGRESS), windows.mainWindow,
                                       &PrintAbortDlgProc, 0);

    const PrintLayout layout = MeasurePrintLayout(dc, logFontCopy);
    const int lpp = layout.linesPerPage;
    const int records = last - first + 1;
    // A font too large for a single line on the page: the job cannot lay
    // out anything and ends as a page that could not be drawn.
    if (lpp < 1) {
        wchar_t format[256];
        wchar_t text[256];
        winlayer::LoadText(IDS_PRINT_PAGE_DRAW_FAILED, format, 256);
        winlayer::FormatText(text, 256, format, 1);
        ShowJobError(windows, caption, text);
        EnableAppWindows(windows);
        ::DestroyWindow(abortDialog);
        abortDialog = nullptr;
        return 0;
    }
    int totalPages = PrintPageCount(records, lpp);
    ::SendMessageW(abortDialog, WM_PRINTPAGE, 1, totalPages);
    ::SendMessageW(abortDialog, WM_PRINTCOPY, 1, copies.total);

    DOCINFOW document = {};
    document.cbSize = sizeof(document);
    document.lpszDocName = kDocumentName;
    if (::StartDocW(dc, &document) <= 0) {
        ReportFileErrorWithoutWindow();
        EnableAppWindows(windows);
        return 0;
    }
    ::ShowWindow(abortDialog, SW_SHOW);
    std::unique_ptr<MessageRecord[]> page(new (std::nothrow) MessageRecord[lpp]);
    int printed = 0;
    bool error = page == nullptr;
    wchar_t labelFormat[kPageLabelUnits];
    wchar_t label[kPageLabelUnits];
    winlayer::LoadText(IDS_PRINT_PAGE_LABEL, labelFormat, kPageLabelUnits);

    for (int copy = 1; copy <= copies.outer && !error && !printCancelled; ++copy) {
        if (collate)
            ::SendMessageW(abortDialog, WM_PRINTCOPY, copy, copies.outer);
        for (int p = 1;; ++p) {
            ::SendMessageW(abortDialog, WM_PRINTPAGE, p, totalPages);
            const int n = ReadPrintPage(file, first, last, printed, lpp, page.get());
            if (n < 0) {
                wchar_t text[256];
                winlayer::LoadText(IDS_PRINT_PAGE_READ_FAILED, text, 256);
                ShowJobError(windows, caption, text);
                error = true;
                break;
            }
            winlayer::FormatText(label, kPageLabelUnits, labelFormat, p);
            for (int k = 1; k <= copies.inner; ++k) {
                if (!collate)
                    ::SendMessageW(abortDialog, WM_PRINTCOPY, k, copies.inner);
                if (::StartPage(dc) <= 0) {
                    ReportFileErrorWithoutWindow();
                    error = true;
                }
                const int drawn = DrawPrintPage(dc, logFontCopy, fontDialogStateCopy.rgbColors,
                                                page.get(), n, layout.text, lpp,
                                                layout.lineHeight, path, label);
                if (drawn < 0) {
                    wchar_t format[256];
                    wchar_t text[256];
                    winlayer::LoadText(IDS_PRINT_PAGE_DRAW_FAILED, format, 256);
                    winlayer::FormatText(text, 256, format, p);
                    error = true;
                    ShowJobError(windows, caption, text);
                    break;
                }
                if (k == 1) {
                    printed += drawn;
                    totalPages = p + PrintPageCount(records - printed, lpp);
                    ::SendMessageW(abortDialog, WM_PRINTPAGE, p, totalPages);
                }
                if (::EndPage(dc) <= 0) {
                    ReportFileErrorWithoutWindow();
                    error = true;
                }
                if (error || printCancelled)
                    break;
            }
            if (n < lpp || error || printCancelled)
                break;
        }
    }

    if (error)
        ::AbortDoc(dc);
    else
        ::EndDoc(dc);
    page.reset();
    EnableAppWindows(windows);
    ::SetFocus(focusAfterwards);
    ::DestroyWindow(abortDialog);
    abortDialog = nullptr;
    return error ? 0 : 1;
}
