#pragma once
#include <windows.h>

// The older intake road: a message to the main window whose first parameter
// is a global atom naming the line.  Senders add the atom, send, and delete it.
constexpr UINT WM_MESSATOM = WM_USER + 50;
