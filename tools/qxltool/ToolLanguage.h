#pragma once
#include <windows.h>

#include <string>

#include "tools/qxltool/QxlOptions.h"

// The tool lives in the installation folder beside the window and uses the
// window's language module: the same choice (Config\Language.ini beside
// the program) and the same module path, built for the window's program
// file, or the module --lang names.
std::wstring ToolLanguageModulePath(LanguageChoice choice);

// Loads that module and makes it the resource module of the process, so
// that the shared code's texts come from it.  Null, with its path in
// `path`, when it cannot be loaded.
HMODULE LoadToolLanguage(LanguageChoice choice, std::wstring& path);
