#pragma once
#include <windows.h>
#include <cstddef>

namespace winlayer {

// The module every string, menu, dialog and icon is looked up in: the
// language module once start-up has loaded it, the program itself before.
HINSTANCE ResourceModule();
void SetResourceModule(HINSTANCE module);

// Zero-fills `buffer` (size code units) and loads string `id` into it from
// `module`; returns the length loaded (0 when the string is missing).
int LoadTextFrom(HINSTANCE module, UINT id, wchar_t* buffer, int size);
// The same from the resource module.
int LoadText(UINT id, wchar_t* buffer, int size);

// printf-style formatting with the platform's wide convention (%s is a wide
// string), as the format strings of the language modules are written.  At
// most capacity - 1 characters are produced; the output is cut there and
// always ends with a zero.  Returns the length written.
int FormatText(wchar_t* out, std::size_t capacity, const wchar_t* format, ...);
int FormatTextV(wchar_t* out, std::size_t capacity, const wchar_t* format, va_list args);

// A message box whose text and caption are strings of the resource module.
int ShowResourceBox(HWND owner, UINT textId, UINT captionId, UINT type);

// An ownerless error box with the platform's text for the error `code` (no
// text when the platform has none) and caption string `captionId`.
int ShowSystemErrorBox(DWORD code, UINT captionId);

// Appends `more` to the 260-unit `path` with the platform's path-append rule
// (exactly one backslash between the parts).  False when the result would not fit.
bool JoinPath(wchar_t* path, const wchar_t* more);

} // namespace winlayer
