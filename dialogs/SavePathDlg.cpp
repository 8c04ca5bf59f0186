#include "dialogs/SavePathDlg.h"

#include <shlwapi.h>

#include "dialogs/DirectoryChain.h"
#include "dialogs/FolderBrowser.h"
#include "dialogs/PathRules.h"
#include "winlayer/Resources.h"

winlayer::MessageTable<CSavePathDlg> CSavePathDlg::Messages()
{
    static const winlayer::MessageEntry<CSavePathDlg> table[] = {
        {WM_INITDIALOG, 0, &CSavePathDlg::OnInitDialog},
        {WM_COMMAND, IDC_SAVE_PATH_BROWSE, &CSavePathDlg::OnBrowse},
        {WM_COMMAND, IDOK, &CSavePathDlg::OnOK},
        {WM_COMMAND, IDCANCEL, &CSavePathDlg::OnCancel},
    };
    return winlayer::MakeTable(table);
}

LRESULT CSavePathDlg::OnInitDialog(WPARAM, LPARAM, bool&)
{
    SetItemText(IDC_SAVE_PATH, savePath);
    return 1;
}

LRESULT CSavePathDlg::OnBrowse(WPARAM, LPARAM, bool&)
{
    BrowseIntoControl(hwnd_, IDC_SAVE_PATH);
    return 0;
}

LRESULT CSavePathDlg::OnOK(WPARAM, LPARAM, bool&)
{
    GetItemText(IDC_SAVE_PATH, savePath, MAX_PATH);
    if (savePath[0] == L'\0') {
        Refuse(IDS_SAVEPATH_EMPTY, IDS_SAVEPATH_CAPTION);
        return 0;
    }
    if (!NormalizeSavePath(savePath)) {
        Refuse(IDS_SAVEPATH_INVALID, IDS_SAVEPATH_CAPTION);
        return 0;
    }
    if (!EnsureDirectoryExists()) {
        ::SetFocus(Item(IDC_SAVE_PATH));
        return 0;
    }
    // The existence test is true for files too; only the read-only bit is
    // checked beyond it.
    const DWORD attributes = ::GetFileAttributesW(savePath);
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        Refuse(IDS_SAVEPATH_READONLY, IDS_SAVEPATH_READONLY_CAPTION);
        return 0;
    }
    EndDialog(IDOK);
    return 0;
}

LRESULT CSavePathDlg::OnCancel(WPARAM, LPARAM, bool&)
{
    EndDialog(IDCANCEL);
    return 0;
}

bool CSavePathDlg::EnsureDirectoryExists()
{
    if (::PathFileExistsW(savePath))
        return true;
    if (ShowPathBox(IDS_SAVEPATH_CREATE_ASK, IDS_SAVEPATH_CREATE_CAPTION,
                    MB_OKCANCEL | MB_ICONQUESTION) != IDOK)
        return false;
    if (CreateDirectoryChain(savePath))
        return true;
    ShowPathBox(IDS_SAVEPATH_CREATE_FAILED, IDS_SAVEPATH_CREATE_CAPTION, MB_ICONERROR);
    return false;
}

void CSavePathDlg::Refuse(UINT textId, UINT captionId)
{
    winlayer::ShowResourceBox(hwnd_, textId, captionId, MB_ICONERROR);
    ::SetFocus(Item(IDC_SAVE_PATH));
}

int CSavePathDlg::ShowPathBox(UINT formatId, UINT captionId, UINT type)
{
    wchar_t format[256];
    wchar_t caption[64];
    wchar_t text[256 + MAX_PATH];
    winlayer::LoadText(formatId, format, 256);
    winlayer::LoadText(captionId, caption, 64);
    winlayer::FormatText(text, 256 + MAX_PATH, format, savePath);
    return ::MessageBoxW(hwnd_, text, caption, type);
}
