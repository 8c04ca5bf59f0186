#include "msgwnd/AboutDlg.h"

winlayer::MessageTable<CAboutDlg> CAboutDlg::Messages()
{
    static const winlayer::MessageEntry<CAboutDlg> table[] = {
        {WM_INITDIALOG, 0, &CAboutDlg::OnInitDialog},
        {WM_COMMAND, IDOK, &CAboutDlg::OnClose},
        {WM_COMMAND, IDCANCEL, &CAboutDlg::OnClose},
    };
    return winlayer::MakeTable(table);
}

LRESULT CAboutDlg::OnInitDialog(WPARAM, LPARAM, bool&)
{
    SetItemText(IDC_ABOUT_TEXT, aboutText_);
    return 1;
}

LRESULT CAboutDlg::OnClose(WPARAM wParam, LPARAM, bool&)
{
    EndDialog(LOWORD(wParam));
    return 0;
}
