#pragma once
#include <windows.h>

// Registration of the program as the local server of ShowMess, for the
// RegServer and UnregServer switches.  `module` is the program file, which
// carries the scripts and the type library as resources.

// The ShowMess class (script 111) and the type library (resource 1).
HRESULT RegisterServer(HMODULE module);
// The reverse: the class keys, then the type library.
HRESULT UnregisterServer(HMODULE module);

// What a switch does: the application entry (script 100) first, then the
// server.  Only the server's result is returned; the application entry's
// outcome does not count.
HRESULT UpdateRegistration(HMODULE module, bool install);
