#include "log/LogDirectory.h"

#include "log/LogFormat.h"
#include <shlwapi.h>

void JoinLogPath(wchar_t (&path)[MAX_PATH], const wchar_t* directory, const wchar_t* name)
{
    ::lstrcpynW(path, directory, MAX_PATH);
    ::PathAppendW(path, name);
}

void ForEachLogFile(const wchar_t* directory, bool caseSensitiveExtension,
                    const std::function<void(const wchar_t* name)>& visit)
{
    wchar_t pattern[MAX_PATH];
    JoinLogPath(pattern, directory, L"*.*");
    WIN32_FIND_DATAW found;
    HANDLE search = ::FindFirstFileW(pattern, &found);
    if (search == INVALID_HANDLE_VALUE)
        return;
    do {
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
            continue;
        if (HasLogExtension(found.cFileName, caseSensitiveExtension))
            visit(found.cFileName);
    } while (::FindNextFileW(search, &found));
    ::FindClose(search);
}
