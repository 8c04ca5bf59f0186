#include "dialogs/DirectoryChain.h"

#include <shlwapi.h>

int CreateDirectoryChain(wchar_t* path)
{
    ::PathRemoveBackslashW(path);
    if (::PathFileExistsW(path))
        return 1;
    wchar_t parent[MAX_PATH];
    ::lstrcpynW(parent, path, MAX_PATH);
    if (::PathRemoveFileSpecW(parent) && !CreateDirectoryChain(parent))
        return 0;
    return ::CreateDirectoryW(path, nullptr);
}
