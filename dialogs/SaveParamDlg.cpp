#include "dialogs/SaveParamDlg.h"

#include <vector>

#include "dialogs/SettingNumbers.h"
#include "winlayer/Resources.h"

const wchar_t kSettingRangeMessage[] = L"参数范围有误，请重新设定（0--2147483647）";

winlayer::MessageTable<CSaveParamDlg> CSaveParamDlg::Messages()
{
    static const winlayer::MessageEntry<CSaveParamDlg> table[] = {
        {WM_INITDIALOG, 0, &CSaveParamDlg::OnInitDialog},
        {WM_COMMAND, IDOK, &CSaveParamDlg::OnOK},
        {WM_COMMAND, IDCANCEL, &CSaveParamDlg::OnCancel},
    };
    return winlayer::MakeTable(table);
}

LRESULT CSaveParamDlg::OnInitDialog(WPARAM, LPARAM, bool&)
{
    const struct {
        int id;
        std::uint32_t value;
    } fields[] = {{IDC_SAVE_TIME, saveTime}, {IDC_SAVE_DAYS, saveDays}, {IDC_LOG_SIZE, logSize}};
    for (const auto& field : fields) {
        wchar_t text[16];
        winlayer::FormatText(text, 16, L"%u", field.value);
        SetItemText(field.id, text);
    }
    return 1;
}

LRESULT CSaveParamDlg::OnOK(WPARAM, LPARAM, bool&)
{
    if (ReadField(IDC_SAVE_TIME, saveTime) && ReadField(IDC_SAVE_DAYS, saveDays) &&
        ReadField(IDC_LOG_SIZE, logSize))
        EndDialog(IDOK);
    return 0;
}

LRESULT CSaveParamDlg::OnCancel(WPARAM, LPARAM, bool&)
{
    EndDialog(IDCANCEL);
    return 0;
}

bool CSaveParamDlg::ReadField(int id, std::uint32_t& field)
{
    // The whole text, however long: the length itself is one of the rules.
    std::vector<wchar_t> text(static_cast<std::size_t>(::GetWindowTextLengthW(Item(id))) + 1);
    GetItemText(id, text.data(), static_cast<int>(text.size()));
    field = ParseSettingNumber(text.data());
    if (SettingTextAccepted(text.data(), field))
        return true;
    ::MessageBoxW(hwnd_, kSettingRangeMessage, L"", MB_OK);
    return false;
}
