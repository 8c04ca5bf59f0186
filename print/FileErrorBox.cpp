#include "print/FileErrorBox.h"

#include <windows.h>

#include "lang/ResourceIds.h"
#include "winlayer/Resources.h"

void ReportFileErrorWithoutWindow()
{
    // Taken first: loading the caption may set an error of its own.
    const DWORD code = ::GetLastError();
    wchar_t caption[64];
    winlayer::LoadText(IDS_ERROR_CAPTION, caption, 64);
    wchar_t* text = nullptr;
    ::FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                         FORMAT_MESSAGE_IGNORE_INSERTS,
                     nullptr, code, MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT),
                     reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    ::MessageBoxW(nullptr, text, caption, MB_ICONERROR);
    ::LocalFree(text);
}
