#include "msgwnd/MessWnd.h"

#include "lang/ResourceIds.h"
#include "server/ProgramFiles.h"
#include "winlayer/FileDialogSize.h"
#include "winlayer/Resources.h"

namespace {

constexpr wchar_t kLogFilter[] =
    L"Oriel 7.5 Log Files (*.qxl)\0*.qxl\0Oriel Log Files (*.log)\0*.log\0";
constexpr DWORD kOpenFlags = OFN_EXPLORER | OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY;

} // namespace

LRESULT CMessWnd::OnOpenLog(WPARAM, LPARAM, bool&)
{
    // The current log file holds every line shown once this is done.
    writer.FlushPending(ring.PendingCount());

    wchar_t path[MAX_PATH] = {};
    wchar_t title[128];
    winlayer::LoadText(IDS_FILE_DIALOG_TITLE, title, 128);
    OPENFILENAMEW dialog = {};
    dialog.lStructSize = winlayer::kOpenFileNameVersion4Size;
    dialog.hwndOwner = hwnd_;
    dialog.lpstrFilter = kLogFilter;
    dialog.nFilterIndex = 1;
    dialog.lpstrFile = path;
    dialog.nMaxFile = MAX_PATH;
    dialog.lpstrTitle = title;
    dialog.Flags = kOpenFlags;
    if (!::GetOpenFileNameW(&dialog))
        return 0;

    auto browser = std::make_unique<CBrowseWnd>();
    browser->SetTextColor(fontDialogState.rgbColors);
    browser->SetViewFont(viewFont);
    browser->SetFilePath(path);

    wchar_t caption[128];
    winlayer::LoadText(IDS_BROWSER_TITLE, caption, 128);
    HMENU menu = ::LoadMenuW(winlayer::ResourceModule(), MAKEINTRESOURCEW(IDR_BROWSER_MENU));
    HICON icon = LoadWindowIcon(iconFileName);
    if (icon == nullptr)
        icon = ::LoadIconW(winlayer::ResourceModule(), MAKEINTRESOURCEW(IDI_ORIEL));
    CBrowseWnd::RegisterClassOnce(icon);
    browser->CreateBrowser(caption, menu);

    browser->SeedPrintSettings(printSettings);
    browser->SetAppWindows([this] { return AppWindows(); });
    ::ShowWindow(browser->Handle(), SW_SHOWNORMAL);
    // Kept even when its window could not be made.
    browserWindows.push_back(std::move(browser));
    return 0;
}
