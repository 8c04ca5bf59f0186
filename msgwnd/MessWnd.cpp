#include "msgwnd/MessWnd.h"

#include <cstring>
#include <initializer_list>

#include "lang/ResourceIds.h"
#include "msgwnd/AboutDlg.h"
#include "winlayer/Resources.h"

namespace {

constexpr UINT kClassStyle = CS_BYTEALIGNWINDOW | CS_BYTEALIGNCLIENT | CS_OWNDC | CS_DBLCLKS;
constexpr DWORD kWindowStyle = WS_OVERLAPPEDWINDOW | WS_VSCROLL | WS_VISIBLE;
constexpr DWORD kWindowExStyle = WS_EX_WINDOWEDGE | WS_EX_CLIENTEDGE;

// The writer's timers are this window's timers 0, 1 and 2.
UINT_PTR TimerId(LogTimer timer)
{
    switch (timer) {
    case LogTimer::Flush:
        return 0;
    case LogTimer::Size:
        return 1;
    case LogTimer::Retention:
        return 2;
    }
    return 0;
}

// The font dialog's style text; unused while its flag is not set.
wchar_t boldStyle[] = L"Bold";

} // namespace

CMessWnd::CMessWnd()
    : writer(ring, *this), liveLines(ring, writer), view(liveLines, kLiveViewPolicy)
{
    ring.SetView(&view);
    ChainMessages(view);
    StampPrintRange(printSettings);
}

CMessWnd::~CMessWnd()
{
    if (viewFont != nullptr)
        ::DeleteObject(viewFont);
    FreePrinterSettings(printSettings);
    writer.CloseCurrentFile();
    // The browsers go last, in the order they were opened; a browser whose
    // window is gone already ignores the close request.
    for (std::unique_ptr<CBrowseWnd>& browser : browserWindows) {
        if (browser == nullptr)
            continue;
        ::SendMessageW(browser->Handle(), WM_CLOSE, 0, 0);
        browser.reset();
    }
    browserWindows.clear();
}

winlayer::MessageTable<CMessWnd> CMessWnd::Messages()
{
    // Size, paint, scrolling and keys are the view's: its table is chained.
    static const winlayer::MessageEntry<CMessWnd> table[] = {
        {WM_COMMAND, IDM_ABOUT, &CMessWnd::OnAbout},
        {WM_COMMAND, IDM_FONT, &CMessWnd::OnFont},
        {WM_COMMAND, IDM_SAVE_DIRECTORY, &CMessWnd::OnSaveDirectory},
        {WM_COMMAND, IDM_SAVE_PARAMS, &CMessWnd::OnSaveParams},
        {WM_COMMAND, IDM_OPEN_LOG, &CMessWnd::OnOpenLog},
        {WM_COMMAND, IDM_PRINT, &CMessWnd::OnPrint},
        {WM_COMMAND, IDM_PRINT_SETUP, &CMessWnd::OnPrintSetup},
        {WM_COMMAND, IDM_EXPORT_TEXT, &CMessWnd::OnExportText},
        {WM_MESSATOM, 0, &CMessWnd::OnAtomMessage},
        {WM_DESTROY, 0, &CMessWnd::OnDestroy},
        {WM_TIMER, 0, &CMessWnd::OnTimer},
        {WM_CREATE, 0, &CMessWnd::OnCreate},
        {WM_SYSCOMMAND, 0, &CMessWnd::OnSysCommand},
    };
    return winlayer::MakeTable(table);
}

ATOM CMessWnd::RegisterClass(HINSTANCE instance, const wchar_t* className, HICON icon)
{
    WNDCLASSEXW wc = {};
    wc.style = kClassStyle;
    wc.hInstance = instance;
    wc.hIcon = icon;
    wc.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    wc.lpszClassName = className;
    return RegisterWindowClass(wc);
}

HWND CMessWnd::CreateMainWindow(HINSTANCE instance, const wchar_t* className,
                                const wchar_t* title, HMENU menu, const RECT* bounds)
{
    // The default rectangle is left CW_USEDEFAULT and the rest 0, so its
    // width comes out as CW_USEDEFAULT too: 0 - INT_MIN wraps back to
    // INT_MIN.  The sizes are taken in unsigned arithmetic, where that wrap
    // is defined.
    RECT r = bounds != nullptr ? *bounds : RECT{CW_USEDEFAULT, 0, 0, 0};
    auto extent = [](LONG from, LONG to) {
        return static_cast<int>(static_cast<unsigned long>(to) - static_cast<unsigned long>(from));
    };
    return Create(className, ::GetDesktopWindow(), title, kWindowStyle, kWindowExStyle, menu,
                  r.left, r.top, extent(r.left, r.right), extent(r.top, r.bottom), instance);
}

LRESULT CMessWnd::OnCreate(WPARAM, LPARAM, bool&)
{
    view.Attach(hwnd_);
    wchar_t fileName[128];
    winlayer::LoadText(IDS_SETTINGS_FILE, fileName, 128);
    settingsFile.Locate(fileName);
    SaveSettings settings;
    const bool directoryKnown = settingsFile.Read(settings);
    writer.SetSettings(settings.saveDays, settings.saveTime, settings.logSize);
    // Room for any name the search finds, not only names we make.
    wchar_t name[MAX_PATH] = {};
    if (directoryKnown)
        writer.FindNewestLogFile(settings.saveDirectory, name);
    else
        writer.MakeCurrentLogFileName(name);
    if (writer.OpenCurrentLogFile(settings.saveDirectory, name) != 0)
        return -1;
    SetUpFonts();
    AddTopmostItem();
    view.PlaceAtEnd();
    StartTimer(LogTimer::Flush, kFlushTimerMs);
    StartTimer(LogTimer::Size, kSizeTimerMs);
    StartTimer(LogTimer::Retention, kRetentionTimerMs);
    return 0;
}

void CMessWnd::SetUpFonts()
{
    logFont = LOGFONTW{};
    logFont.lfHeight = -12;
    // An orientation of one degree beside an escapement of 0: what the
    // suite's windows have always used.
    logFont.lfOrientation = 10;
    logFont.lfWeight = FW_NORMAL;
    logFont.lfCharSet = DEFAULT_CHARSET;
    winlayer::LoadText(IDS_FONT_FACE, logFont.lfFaceName, LF_FACESIZE);

    fontDialogState = CHOOSEFONTW{};
    fontDialogState.lStructSize = sizeof(CHOOSEFONTW);
    fontDialogState.hwndOwner = hwnd_;
    fontDialogState.lpLogFont = &logFont;
    fontDialogState.iPointSize = 90;
    fontDialogState.Flags =
        CF_SCREENFONTS | CF_SHOWHELP | CF_INITTOLOGFONTSTRUCT | CF_EFFECTS | CF_APPLY;
    fontDialogState.lpTemplateName = L"fonttemp";
    fontDialogState.hInstance = ::GetModuleHandleW(nullptr);
    fontDialogState.lpszStyle = boldStyle;
    fontDialogState.nFontType = SCREEN_FONTTYPE;
    fontDialogState.nSizeMin = 8;
    fontDialogState.nSizeMax = 50;

    printSettings.logFontCopy = logFont;
    printSettings.fontDialogStateCopy = fontDialogState;
    printSettings.fontDialogStateCopy.lpLogFont = &printSettings.logFontCopy;

    viewFont = ::CreateFontIndirectW(&logFont);
    view.SetFont(viewFont);
    view.SetTextColor(fontDialogState.rgbColors);
}

void CMessWnd::AddTopmostItem()
{
    HMENU systemMenu = ::GetSystemMenu(hwnd_, FALSE);
    wchar_t label[128];
    winlayer::LoadText(IDS_TOPMOST, label, 128);
    ::AppendMenuW(systemMenu, MF_SEPARATOR, 0, nullptr);
    ::AppendMenuW(systemMenu, MF_STRING, IDM_TOPMOST, label);
}

LRESULT CMessWnd::OnDestroy(WPARAM, LPARAM, bool&)
{
    StopTimer(LogTimer::Flush);
    StopTimer(LogTimer::Size);
    StopTimer(LogTimer::Retention);
    writer.FlushPending(ring.PendingCount());
    ::PostQuitMessage(0);
    return 0;
}

LRESULT CMessWnd::OnTimer(WPARAM wParam, LPARAM, bool&)
{
    for (LogTimer timer : {LogTimer::Flush, LogTimer::Size, LogTimer::Retention}) {
        if (TimerId(timer) == wParam)
            return writer.OnTimer(timer);
    }
    return 0;
}

LRESULT CMessWnd::OnSysCommand(WPARAM wParam, LPARAM, bool& handled)
{
    wchar_t topmostLabel[128];
    wchar_t notTopmostLabel[128];
    winlayer::LoadText(IDS_TOPMOST, topmostLabel, 128);
    winlayer::LoadText(IDS_NOTOPMOST, notTopmostLabel, 128);
    if (wParam == IDM_TOPMOST || wParam == IDM_NOTOPMOST) {
        const bool makeTopmost = wParam == IDM_TOPMOST;
        RECT r;
        ::GetWindowRect(hwnd_, &r);
        ::SetWindowPos(hwnd_, makeTopmost ? HWND_TOPMOST : HWND_NOTOPMOST, r.left, r.top,
                       r.right - r.left, r.bottom - r.top, SWP_SHOWWINDOW);
        // Replaces the item by command; a synthetic command whose item is
        // not in the menu finds nothing and leaves the menu as it is.
        ::ModifyMenuW(::GetSystemMenu(hwnd_, FALSE), static_cast<UINT>(wParam),
                      MF_BYCOMMAND | MF_STRING, makeTopmost ? IDM_NOTOPMOST : IDM_TOPMOST,
                      makeTopmost ? notTopmostLabel : topmostLabel);
    }
    // Every system command, these two included, also gets the default handling.
    handled = false;
    return 0;
}

LRESULT CMessWnd::OnAbout(WPARAM, LPARAM, bool&)
{
    CAboutDlg dialog(aboutText);
    dialog.DoModal(hwnd_);
    return 0;
}

LRESULT CMessWnd::OnAtomMessage(WPARAM wParam, LPARAM, bool&)
{
    switch (writer.DiskFullState()) {
    case 0: {
        wchar_t line[128] = {};
        UINT length = ::GlobalGetAtomNameW(static_cast<ATOM>(LOWORD(wParam)), line, 128);
        if (length == 0)
            return -1;
        if (length >= 128)
            line[127] = L'\0';
        AddMessage(line);
        return 0;
    }
    case 1: {
        // The log writer has just met a full disk: put the notice into the
        // view once, then take no more atom lines for the life of the process.
        writer.SetDiskFullState(2);
        wchar_t notice[128];
        winlayer::LoadText(IDS_DISK_FULL_NOTICE, notice, 128);
        AddMessage(notice);
        return 0;
    }
    default:
        return 0;
    }
}

void CMessWnd::StartTimer(LogTimer timer, UINT periodMs)
{
    ::SetTimer(hwnd_, TimerId(timer), periodMs, nullptr);
}

void CMessWnd::StopTimer(LogTimer timer)
{
    ::KillTimer(hwnd_, TimerId(timer));
}

void CMessWnd::ShowErrorBox(UINT textId)
{
    winlayer::ShowResourceBox(hwnd_, textId, IDS_ERROR_CAPTION, MB_ICONERROR);
}

void CMessWnd::ShowSystemErrorBox(DWORD code)
{
    winlayer::ShowSystemErrorBox(code, IDS_ERROR_CAPTION);
}

void CMessWnd::AnnounceDiskFull()
{
    ::SendMessageW(hwnd_, WM_MESSATOM, 0, 0);
}

void CMessWnd::LogListCleared()
{
    view.ClearForNewFile();
}

void CMessWnd::NewLogFileStarted()
{
    view.RefreshAfterNewFile();
}

void CMessWnd::CurrentLogFileOpened()
{
    view.DropPage();
}
