#include "browse/BrowseWnd.h"

#include "browse/TextLogConversion.h"
#include "lang/ResourceIds.h"
#include "log/LogFileIo.h"
#include "log/LogFormat.h"

namespace {

constexpr wchar_t kClassName[] = L"OrielBrowseWnd";
constexpr UINT kClassStyle = CS_BYTEALIGNWINDOW | CS_BYTEALIGNCLIENT | CS_OWNDC | CS_DBLCLKS;
constexpr DWORD kWindowStyle = WS_OVERLAPPEDWINDOW | WS_VSCROLL | WS_VISIBLE;
constexpr DWORD kWindowExStyle = WS_EX_WINDOWEDGE | WS_EX_CLIENTEDGE;

constexpr UINT_PTR kFollowTimer = 0;
constexpr UINT kFollowTimerMs = 100;

} // namespace

CBrowseWnd::CBrowseWnd() : view(lines, kBrowserViewPolicy)
{
    ChainMessages(view);
    StampPrintRange(printSettings);
}

CBrowseWnd::~CBrowseWnd()
{
    FreePrinterSettings(printSettings);
    if (!lines.CloseFile())
        ReportBrowseError();
}

winlayer::MessageTable<CBrowseWnd> CBrowseWnd::Messages()
{
    // Size, paint, scrolling and keys are the view's: its table is chained.
    static const winlayer::MessageEntry<CBrowseWnd> table[] = {
        {WM_CREATE, 0, &CBrowseWnd::OnCreate},
        {WM_TIMER, 0, &CBrowseWnd::OnTimer},
        {WM_DESTROY, 0, &CBrowseWnd::OnDestroy},
        {WM_COMMAND, IDM_PRINT, &CBrowseWnd::OnPrint},
        {WM_COMMAND, IDM_PRINT_SETUP, &CBrowseWnd::OnPrintSetup},
        {WM_COMMAND, IDM_EXPORT_TEXT, &CBrowseWnd::OnExportText},
        {WM_CLOSE, 0, &CBrowseWnd::OnClose},
    };
    return winlayer::MakeTable(table);
}

void CBrowseWnd::RegisterClassOnce(HICON icon)
{
    static bool registered = false;
    if (registered)
        return;
    WNDCLASSEXW wc = {};
    wc.style = kClassStyle;
    wc.hInstance = ::GetModuleHandleW(nullptr);
    wc.hIcon = icon;
    wc.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    wc.lpszClassName = kClassName;
    registered = RegisterWindowClass(wc) != 0;
}

HWND CBrowseWnd::CreateBrowser(const wchar_t* caption, HMENU menu)
{
    // The desktop as parent: an independent top-level window, not owned by
    // the main window.
    return Create(kClassName, ::GetDesktopWindow(), caption, kWindowStyle, kWindowExStyle, menu,
                  CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT);
}

void CBrowseWnd::SeedPrintSettings(const PrintSettings& mainWindow)
{
    printSettings.logFontCopy = mainWindow.logFontCopy;
    printSettings.fontDialogStateCopy = mainWindow.fontDialogStateCopy;
    printSettings.fontDialogStateCopy.lpLogFont = &printSettings.logFontCopy;
    printSettings.fontDialogStateCopy.hwndOwner = hwnd_;
    printSettings.printRange = RangeAll;
    printSettings.rangeFrom = mainWindow.rangeFrom;
    printSettings.rangeTo = mainWindow.rangeTo;
}

LRESULT CBrowseWnd::OnCreate(WPARAM, LPARAM, bool&)
{
    view.Attach(hwnd_);
    lines.SetOwner(hwnd_);
    if (!ConvertTextLog(hwnd_, lines.PathBuffer(), lines.FileSlot())) {
        // The window is there for a moment and then closes itself.
        ::PostMessageW(hwnd_, WM_CLOSE, 0, 0);
        return 0;
    }
    if (CountRecords(false) != 0)
        return -1;
    ::SetTimer(hwnd_, kFollowTimer, kFollowTimerMs, nullptr);
    return 0;
}

int CBrowseWnd::CountRecords(bool following)
{
    auto fail = [&](bool report) {
        if (following)
            ::KillTimer(hwnd_, kFollowTimer);
        if (report)
            ReportBrowseError();
        return -1;
    };
    if (!lines.CloseFile() || !lines.OpenFile())
        return fail(true);
    switch (lines.ReadHeader()) {
    case FileLineSource::Header::Accepted:
        break;
    case FileLineSource::Header::Failed:
        return fail(true);
    case FileLineSource::Header::TooShort:
        // Silent; the handle stays open for the next operation to close.
        return fail(false);
    case FileLineSource::Header::Newer:
        if (!lines.CloseFile())
            return fail(true);
        lines.RefuseNewerFormat();
        return fail(false);
    }
    if (!following)
        view.DropPage();
    DWORD size = 0;
    if (!SeekLogFile(lines.File(), 0, FILE_END, &size))
        return fail(true);
    lines.SetLineCount(RecordCountFromSize(size));
    if (!lines.CloseFile())
        return fail(true);
    return 0;
}

LRESULT CBrowseWnd::OnTimer(WPARAM, LPARAM, bool&)
{
    // Only the count and the bar follow the file: new lines show once the
    // user scrolls.  Any failure stops the following for good.
    if (CountRecords(true) != 0)
        return -1;
    view.SetVerticalBar(view.TopLine());
    return 0;
}

LRESULT CBrowseWnd::OnDestroy(WPARAM, LPARAM, bool&)
{
    ::KillTimer(hwnd_, kFollowTimer);
    return 0;
}

LRESULT CBrowseWnd::OnClose(WPARAM, LPARAM, bool& handled)
{
    ::KillTimer(hwnd_, kFollowTimer);
    FreePrinterSettings(printSettings);
    // Zero whatever the frees returned: the print setup dialog may have
    // handed back handles it had freed already, and the destructor must not
    // free them once more.
    printSettings.printerDevMode = nullptr;
    printSettings.printerDevNames = nullptr;
    if (!lines.CloseFile()) {
        ReportBrowseError();
        // Given up on: the window goes, and nothing will use it again.
        lines.FileSlot() = INVALID_HANDLE_VALUE;
    }
    // The default handling destroys the window; the object stays.
    handled = false;
    return 0;
}
