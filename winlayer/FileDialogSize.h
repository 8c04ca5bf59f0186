#pragma once
#include <windows.h>
#include <commdlg.h>

#include <cstddef>

namespace winlayer {

// The size of the file dialogs' structure without the fields added after
// version 4, which the log commands' dialogs have always passed.  The
// platform header's OPENFILENAME_SIZE_VERSION_400W reaches the last field
// through a null pointer, undefined behaviour that the checked build traps;
// offsetof gives the same number.
constexpr DWORD kOpenFileNameVersion4Size =
    offsetof(OPENFILENAMEW, lpTemplateName) + sizeof(OPENFILENAMEW::lpTemplateName);

} // namespace winlayer
