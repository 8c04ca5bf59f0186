#pragma once
#include <windows.h>

#include <functional>

// `path` = `directory` joined with `name` (one backslash between them).
void JoinLogPath(wchar_t (&path)[MAX_PATH], const wchar_t* directory, const wchar_t* name);

// Calls `visit` for every entry of `directory` that is a log file: not a
// directory, extension ".qxl" (exactly, or in any case).  Nothing happens
// when the directory cannot be read.
void ForEachLogFile(const wchar_t* directory, bool caseSensitiveExtension,
                    const std::function<void(const wchar_t* name)>& visit);
