#include "dialogs/SettingsCommands.h"

#include "dialogs/PathRules.h"
#include "dialogs/SaveParamDlg.h"
#include "dialogs/SavePathDlg.h"
#include "lang/ResourceIds.h"
#include "winlayer/Resources.h"

namespace {

constexpr wchar_t kSection[] = L"save";

void WriteNumber(const wchar_t* settingsPath, const wchar_t* key, std::uint32_t value)
{
    wchar_t text[20];
    winlayer::FormatText(text, 20, L"%d", static_cast<int>(value));
    ::WritePrivateProfileStringW(kSection, key, text, settingsPath);
}

} // namespace

void RunSaveDirectoryCommand(HWND owner, const wchar_t* settingsPath, LogSettings& settings)
{
    CSavePathDlg dialog;
    ::lstrcpynW(dialog.savePath, settings.SaveDirectory(), MAX_PATH);
    if (dialog.DoModal(owner) != IDOK)
        return;
    wchar_t chosen[MAX_PATH];
    ::lstrcpynW(chosen, dialog.savePath, MAX_PATH);
    if (SameSaveDirectory(chosen, settings.SaveDirectory()))
        return;
    settings.SetSaveDirectory(chosen);
    // Write failures go unnoticed: the directory is in force for this run.
    ::WritePrivateProfileStringW(kSection, L"savedirectory", chosen, settingsPath);
    if (settings.StartNewLogFile() == 0)
        winlayer::ShowResourceBox(owner, IDS_NEW_LOG_FAILED, IDS_ERROR_CAPTION, MB_ICONERROR);
}

void RunSaveParamsCommand(HWND owner, const wchar_t* settingsPath, LogSettings& settings)
{
    CSaveParamDlg dialog;
    const SaveParameters current = settings.Parameters();
    dialog.saveDays = current.saveDays;
    dialog.saveTime = current.saveTime;
    dialog.logSize = current.logSize;
    if (dialog.DoModal(owner) != IDOK)
        return;
    settings.SetParameters({dialog.saveDays, dialog.saveTime, dialog.logSize});
    WriteNumber(settingsPath, L"savedays", dialog.saveDays);
    WriteNumber(settingsPath, L"savetime", dialog.saveTime);
    WriteNumber(settingsPath, L"logsize", dialog.logSize);
}
