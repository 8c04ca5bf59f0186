#pragma once
#include <windows.h>
#include <string>

// The program's directory, cut just after the last backslash of `path` (the
// backslash kept); the whole path when it has none.
std::wstring ProgramDirectoryOf(const std::wstring& path);

// GetProgramDirectory: the directory of the running program, at most 260 units.
void GetProgramDirectory(wchar_t (&result)[MAX_PATH]);

// The window icon named by the suite's logging configuration, below the
// language's folder (string 133) in "Resource\": none when it cannot be loaded.
HICON LoadWindowIcon(const wchar_t* iconFileName);
