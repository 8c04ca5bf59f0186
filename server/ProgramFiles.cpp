#include "server/ProgramFiles.h"

#include <cwchar>

#include "lang/ResourceIds.h"
#include "winlayer/Resources.h"

std::wstring ProgramDirectoryOf(const std::wstring& path)
{
    std::size_t slash = path.rfind(L'\\');
    return slash == std::wstring::npos ? path : path.substr(0, slash + 1);
}

void GetProgramDirectory(wchar_t (&result)[MAX_PATH])
{
    wchar_t path[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, path, MAX_PATH);
    ::lstrcpynW(result, ProgramDirectoryOf(path).c_str(), MAX_PATH);
}

HICON LoadWindowIcon(const wchar_t* iconFileName)
{
    wchar_t path[MAX_PATH];
    GetProgramDirectory(path);
    wchar_t folder[MAX_PATH];
    winlayer::LoadText(IDS_ICON_FOLDER, folder, MAX_PATH);
    std::wstring iconPath = std::wstring(path) + folder + L"Resource\\" + iconFileName;
    return static_cast<HICON>(::LoadImageW(winlayer::ResourceModule(), iconPath.c_str(), IMAGE_ICON,
                                           0, 0, LR_LOADFROMFILE | LR_DEFAULTSIZE));
}
