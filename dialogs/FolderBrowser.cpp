#include "dialogs/FolderBrowser.h"

#include <shlobj.h>
#include <shlwapi.h>

#include "lang/ResourceIds.h"
#include "winlayer/Resources.h"

namespace {

// Keeps the compacted status text clear of the browser's edge.
constexpr int kStatusMargin = 5;

void ShowSelectionAsStatus(HWND browser, PCIDLIST_ABSOLUTE selection)
{
    wchar_t path[MAX_PATH] = {};
    if (!::SHGetPathFromIDListW(selection, path))
        return;
    RECT client;
    ::GetClientRect(browser, &client);
    HDC dc = ::GetDC(browser);
    ::PathCompactPathW(dc, path, static_cast<UINT>(client.right - client.left - kStatusMargin));
    ::ReleaseDC(browser, dc);
    ::SendMessageW(browser, BFFM_SETSTATUSTEXTW, 0, reinterpret_cast<LPARAM>(path));
}

} // namespace

int CALLBACK BrowseCallback(HWND browser, UINT message, LPARAM lParam, LPARAM)
{
    if (message == BFFM_INITIALIZED) {
        wchar_t current[MAX_PATH] = {};
        ::GetCurrentDirectoryW(MAX_PATH, current);
        ::SendMessageW(browser, BFFM_SETSELECTIONW, TRUE, reinterpret_cast<LPARAM>(current));
    } else if (message == BFFM_SELCHANGED) {
        ShowSelectionAsStatus(browser, reinterpret_cast<PCIDLIST_ABSOLUTE>(lParam));
    }
    return 0;
}

void BrowseIntoControl(HWND dialog, int editId)
{
    IMalloc* allocator = nullptr;
    if (FAILED(::SHGetMalloc(&allocator)))
        return;
    wchar_t displayName[MAX_PATH] = {};
    wchar_t title[64];
    winlayer::LoadText(IDS_BROWSE_FOLDER_TITLE, title, 64);
    BROWSEINFOW info = {};
    info.hwndOwner = dialog;
    info.pszDisplayName = displayName;
    info.lpszTitle = title;
    info.ulFlags = BIF_RETURNONLYFSDIRS | BIF_STATUSTEXT;
    info.lpfn = &BrowseCallback;
    PIDLIST_ABSOLUTE chosen = ::SHBrowseForFolderW(&info);
    if (chosen != nullptr) {
        wchar_t path[MAX_PATH] = {};
        // OK reads the control as shown, so a long path arrives shortened.
        if (::SHGetPathFromIDListW(chosen, path))
            ::PathSetDlgItemPathW(dialog, editId, path);
        allocator->Free(chosen);
    }
    allocator->Release();
}
