#pragma once
#include <windows.h>

// Creates the directory `path` (a 260-unit buffer) and every missing parent,
// the outermost first.  One trailing backslash is removed from `path` in
// place.  Non-zero on success, also when the path exists already.
int CreateDirectoryChain(wchar_t* path);
