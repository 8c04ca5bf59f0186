#pragma once
#include <windows.h>

#include "dialogs/LogSettings.h"
#include "settings/SaveSettings.h"

// The main window's two settings commands.  Each runs its dialog owned by
// `owner` and, on OK, changes the running writer through `settings` and
// writes section "save" of `settingsFile`.

// Command 32768: a new save directory takes effect at once.  A directory
// equal to the current one ignoring case changes nothing; any other is
// stored, written as "savedirectory", and a new log file is started in it
// (string 32803 in a box owned by `owner` when that fails; the directory
// stays in force either way).
void RunSaveDirectoryCommand(HWND owner, const SettingsFile& settingsFile, LogSettings& settings);

// Command 32771: the three numbers take effect at once (no timer restarts,
// no rollover here) and are written as "savedays", "savetime", "logsize",
// in that order.  Cancel changes nothing.
void RunSaveParamsCommand(HWND owner, const SettingsFile& settingsFile, LogSettings& settings);
