#include "msgwnd/MessWnd.h"

#include <cstring>
#include <shlwapi.h>

#include "lang/ResourceIds.h"
#include "msgwnd/AboutDlg.h"
#include "msgwnd/ScrollRules.h"
#include "msgwnd/ViewDC.h"
#include "winlayer/Resources.h"

namespace {

constexpr UINT kClassStyle = CS_BYTEALIGNWINDOW | CS_BYTEALIGNCLIENT | CS_OWNDC | CS_DBLCLKS;
constexpr DWORD kWindowStyle = WS_OVERLAPPEDWINDOW | WS_VSCROLL | WS_VISIBLE;
constexpr DWORD kWindowExStyle = WS_EX_WINDOWEDGE | WS_EX_CLIENTEDGE;

constexpr UINT kDefaultSaveDays = 10;
constexpr UINT kDefaultSaveTime = 600;
constexpr UINT kDefaultLogSize = 10;

// The font dialog's style text; unused while its flag is not set.
wchar_t boldStyle[] = L"Bold";

} // namespace

CMessWnd::CMessWnd() : writer(ring, *this)
{
    ring.SetView(this);
    ::GetLocalTime(&rangeFrom);
    rangeTo = rangeFrom;
}

CMessWnd::~CMessWnd()
{
    if (viewFont != nullptr)
        ::DeleteObject(viewFont);
    if (printerDevMode != nullptr)
        printerDevMode = ::GlobalFree(printerDevMode);
    if (printerDevNames != nullptr)
        printerDevNames = ::GlobalFree(printerDevNames);
    pageBuffer.reset();
    HANDLE& logFile = writer.LogFile();
    if (logFile != INVALID_HANDLE_VALUE) {
        if (!::CloseHandle(logFile))
            writer.ReportFileError(true);
        logFile = INVALID_HANDLE_VALUE;
    }
}

winlayer::MessageTable<CMessWnd> CMessWnd::Messages()
{
    static const winlayer::MessageEntry<CMessWnd> table[] = {
        {WM_SIZE, 0, &CMessWnd::OnSize},
        {WM_COMMAND, IDM_ABOUT, &CMessWnd::OnAbout},
        {WM_COMMAND, IDM_FONT, &CMessWnd::OnFont},
        {WM_COMMAND, IDM_SAVE_DIRECTORY, &CMessWnd::OnSaveDirectory},
        {WM_COMMAND, IDM_SAVE_PARAMS, &CMessWnd::OnSaveParams},
        {WM_COMMAND, IDM_OPEN_LOG, &CMessWnd::OnOpenLog},
        {WM_COMMAND, IDM_PRINT, &CMessWnd::OnPrint},
        {WM_COMMAND, IDM_PRINT_SETUP, &CMessWnd::OnPrintSetup},
        {WM_COMMAND, IDM_EXPORT_TEXT, &CMessWnd::OnExportText},
        {WM_PAINT, 0, &CMessWnd::OnPaint},
        {WM_MESSATOM, 0, &CMessWnd::OnAtomMessage},
        {WM_DESTROY, 0, &CMessWnd::OnDestroy},
        {WM_TIMER, 0, &CMessWnd::OnTimer},
        {WM_CREATE, 0, &CMessWnd::OnCreate},
        {WM_VSCROLL, 0, &CMessWnd::OnVScroll},
        {WM_KEYDOWN, 0, &CMessWnd::OnKeyDown},
        {WM_SYSCOMMAND, 0, &CMessWnd::OnSysCommand},
        {WM_HSCROLL, 0, &CMessWnd::OnHScroll},
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
    // width comes out as CW_USEDEFAULT too.
    RECT r = bounds != nullptr ? *bounds : RECT{CW_USEDEFAULT, 0, 0, 0};
    return Create(className, ::GetDesktopWindow(), title, kWindowStyle, kWindowExStyle, menu,
                  r.left, r.top, r.right - r.left, r.bottom - r.top, instance);
}

LRESULT CMessWnd::OnCreate(WPARAM, LPARAM, bool&)
{
    wchar_t directory[MAX_PATH] = {};
    // Room for any name the search finds, not only names we make.
    wchar_t name[MAX_PATH] = {};
    ReadSettings(directory, name);
    if (writer.OpenCurrentLogFile(directory, name) != 0)
        return -1;
    SetUpFonts();
    AddTopmostItem();
    PlaceFirstTopLine();
    StartTimer(FlushTimer, kFlushTimerMs);
    StartTimer(SizeTimer, kSizeTimerMs);
    StartTimer(RetentionTimer, kRetentionTimerMs);
    return 0;
}

void CMessWnd::ReadSettings(wchar_t* directory, wchar_t* name)
{
    wchar_t fileName[128];
    winlayer::LoadText(IDS_SETTINGS_FILE, fileName, 128);
    ::GetModuleFileNameW(nullptr, settingsPath, MAX_PATH);
    ::PathRemoveFileSpecW(settingsPath);
    winlayer::JoinPath(settingsPath, L"config");
    winlayer::JoinPath(settingsPath, fileName);

    UINT saveDays = ::GetPrivateProfileIntW(L"save", L"savedays", kDefaultSaveDays, settingsPath);
    UINT saveTime = ::GetPrivateProfileIntW(L"save", L"savetime", kDefaultSaveTime, settingsPath);
    UINT logSize = ::GetPrivateProfileIntW(L"save", L"logsize", kDefaultLogSize, settingsPath);
    writer.SetSettings(saveDays, saveTime, logSize);

    ::GetPrivateProfileStringW(L"save", L"savedirectory", L"", directory, MAX_PATH, settingsPath);
    if (directory[0] != L'\0') {
        writer.FindNewestLogFile(directory, name);
        return;
    }
    // No save directory yet: the default one, and the defaults written back.
    // The numbers written are the constant defaults, not the values just
    // read: a file with only "savedays" = 30 runs with 30 this time and says
    // 10 from now on.  Kept that way on purpose.
    ::GetModuleFileNameW(nullptr, directory, MAX_PATH);
    ::PathRemoveFileSpecW(directory);
    winlayer::JoinPath(directory, L"log");
    ::WritePrivateProfileStringW(L"save", L"savedays", L"10", settingsPath);
    ::WritePrivateProfileStringW(L"save", L"savetime", L"600", settingsPath);
    ::WritePrivateProfileStringW(L"save", L"logsize", L"10", settingsPath);
    ::WritePrivateProfileStringW(L"save", L"savedirectory", directory, settingsPath);
    writer.MakeCurrentLogFileName(name);
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

    logFontCopy = logFont;
    fontDialogStateCopy = fontDialogState;
    fontDialogStateCopy.lpLogFont = &logFontCopy;

    viewFont = ::CreateFontIndirectW(&logFont);
    lineHeight = 0;
}

void CMessWnd::AddTopmostItem()
{
    HMENU systemMenu = ::GetSystemMenu(hwnd_, FALSE);
    wchar_t label[128];
    winlayer::LoadText(IDS_TOPMOST, label, 128);
    ::AppendMenuW(systemMenu, MF_SEPARATOR, 0, nullptr);
    ::AppendMenuW(systemMenu, MF_STRING, IDM_TOPMOST, label);
}

void CMessWnd::PlaceFirstTopLine()
{
    // The count is not kept: the first size change sets linesPerPage.
    ring.topLine = FirstTopLine(ring.lineCount, ViewDC(hwnd_, viewFont).LinesThatFit());
}

LRESULT CMessWnd::OnDestroy(WPARAM, LPARAM, bool&)
{
    StopTimer(FlushTimer);
    StopTimer(SizeTimer);
    StopTimer(RetentionTimer);
    writer.FlushPending(ring.PendingCount());
    ::PostQuitMessage(0);
    return 0;
}

LRESULT CMessWnd::OnTimer(WPARAM wParam, LPARAM, bool&)
{
    return writer.OnTimer(wParam);
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

void CMessWnd::StartTimer(UINT_PTR id, UINT periodMs)
{
    ::SetTimer(hwnd_, id, periodMs, nullptr);
}

void CMessWnd::StopTimer(UINT_PTR id)
{
    ::KillTimer(hwnd_, id);
}

void CMessWnd::ShowErrorBox(UINT textId)
{
    winlayer::ShowResourceBox(hwnd_, textId, IDS_ERROR_CAPTION, MB_ICONERROR);
}

void CMessWnd::ShowSystemErrorBox(const wchar_t* text, const wchar_t* caption)
{
    ::MessageBoxW(nullptr, text, caption, MB_ICONERROR);
}

void CMessWnd::AnnounceDiskFull()
{
    ::SendMessageW(hwnd_, WM_MESSATOM, 0, 0);
}

void CMessWnd::ClearViewForNewFile()
{
    pageCount = 0;
    hPos = 0;
    if (linesPerPage > 0)
        std::memset(pageBuffer.get(), 0, sizeof(MessageRecord) * linesPerPage);
}

void CMessWnd::RefreshViewForNewFile()
{
    if (linesPerPage > 0) {
        RefreshPage();
        InvalidateAll();
    }
}

void CMessWnd::DropViewPage()
{
    pageBuffer.reset();
    linesPerPage = 0;
    pageCount = 0;
    hPos = 0;
}
