#include "msgwnd/MessWnd.h"

#include "dialogs/SettingsCommands.h"
#include "dialogs/WriterLogSettings.h"

LRESULT CMessWnd::OnSaveDirectory(WPARAM, LPARAM, bool&)
{
    WriterLogSettings settings(writer);
    RunSaveDirectoryCommand(hwnd_, settingsFile, settings);
    return 0;
}

LRESULT CMessWnd::OnSaveParams(WPARAM, LPARAM, bool&)
{
    WriterLogSettings settings(writer);
    RunSaveParamsCommand(hwnd_, settingsFile, settings);
    return 0;
}
