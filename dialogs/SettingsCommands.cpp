#include "dialogs/SettingsCommands.h"

#include "dialogs/PathRules.h"
#include "dialogs/SaveParamDlg.h"
#include "dialogs/SavePathDlg.h"
#include "lang/ResourceIds.h"
#include "winlayer/Resources.h"

namespace {

void WriteNumber(const SettingsFile& settingsFile, const wchar_t* key, std::uint32_t value)
{
    wchar_t text[20];
    winlayer::FormatText(text, 20, L"%d", static_cast<int>(value));
    settingsFile.Write(key, text);
}

} // namespace

void RunSaveDirectoryCommand(HWND owner, const SettingsFile& settingsFile, LogSettings& settings)
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
    settingsFile.Write(L"savedirectory", chosen);
    if (settings.StartNewLogFile() == 0)
        winlayer::ShowResourceBox(owner, IDS_NEW_LOG_FAILED, IDS_ERROR_CAPTION, MB_ICONERROR);
}

void RunSaveParamsCommand(HWND owner, const SettingsFile& settingsFile, LogSettings& settings)
{
    CSaveParamDlg dialog;
    const SaveParameters current = settings.Parameters();
    dialog.saveDays = current.saveDays;
    dialog.saveTime = current.saveTime;
    dialog.logSize = current.logSize;
    if (dialog.DoModal(owner) != IDOK)
        return;
    settings.SetParameters({dialog.saveDays, dialog.saveTime, dialog.logSize});
    WriteNumber(settingsFile, L"savedays", dialog.saveDays);
    WriteNumber(settingsFile, L"savetime", dialog.saveTime);
    WriteNumber(settingsFile, L"logsize", dialog.logSize);
}
