#pragma once
#include <windows.h>

// File access shared by the log browser's operations.

// Opens `path` for reading, existing files only, with an inheritable
// handle.  Reading and writing are shared, unlike the main window's opens,
// so the log writer can go on appending to a log that a browser shows.
HANDLE OpenBrowsedFile(const wchar_t* path);

// The browser's report of a failed file operation: the platform's text for
// the last error in a box with no owner, caption string 107, error icon.
// Unlike the log writer's report it has no full-disk handling: a browser
// only reads, and the main window deals with its own disk.
void ReportBrowseError();
