#include "browse/BrowseFileIo.h"

#include "lang/ResourceIds.h"
#include "winlayer/Resources.h"

HANDLE OpenBrowsedFile(const wchar_t* path)
{
    SECURITY_ATTRIBUTES inheritable = {};
    inheritable.nLength = sizeof(inheritable);
    inheritable.bInheritHandle = TRUE;
    return ::CreateFileW(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable,
                         OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
}

void ReportBrowseError()
{
    // Taken first: loading the caption may set an error of its own.
    const DWORD code = ::GetLastError();
    wchar_t caption[128];
    winlayer::LoadText(IDS_ERROR_CAPTION, caption, 128);
    wchar_t* text = nullptr;
    ::FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                         FORMAT_MESSAGE_IGNORE_INSERTS,
                     nullptr, code, MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT),
                     reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    ::MessageBoxW(nullptr, text != nullptr ? text : L"", caption, MB_ICONERROR);
    ::LocalFree(text);
}
