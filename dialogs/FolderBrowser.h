#pragma once
#include <windows.h>

// The folder browser behind the save-path dialog's browse button.

// Starts the browser on the process's current directory (deliberately not
// on the save directory) and shows each selected folder's path, compacted to
// the browser's width, as its status text.  Always 0.
int CALLBACK BrowseCallback(HWND browser, UINT message, LPARAM lParam, LPARAM data);

// Runs the browser owned by `dialog`.  When the user picks a file-system
// folder, control `editId` shows its path, shortened with an ellipsis when it
// does not fit the control.  Needs a single-threaded apartment.
void BrowseIntoControl(HWND dialog, int editId);
