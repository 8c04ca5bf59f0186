#include "tools/qxltool/LogSet.h"

#include "log/LogDirectory.h"
#include "log/LogFormat.h"

#include <algorithm>

LogFileEntry MakeLogFileEntry(const std::wstring& path)
{
    LogFileEntry entry;
    entry.path = path;
    const std::size_t slash = path.find_last_of(L"\\/");
    entry.name = slash == std::wstring::npos ? path : path.substr(slash + 1);
    FILETIME time;
    entry.named = ParseLogFileTime(entry.name.c_str(), &time);
    if (entry.named)
        entry.nameTime = (static_cast<ULONGLONG>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
    return entry;
}

std::vector<LogFileEntry> OrderLogSet(std::vector<LogFileEntry> files)
{
    // The path decides last, so that the same file given twice ends up
    // next to itself.
    const auto pathOrder = [](const LogFileEntry& a, const LogFileEntry& b) {
        return _wcsicmp(a.path.c_str(), b.path.c_str());
    };
    std::sort(files.begin(), files.end(), [&](const LogFileEntry& a, const LogFileEntry& b) {
        if (a.named != b.named)
            return !a.named;
        if (a.named && a.nameTime != b.nameTime)
            return a.nameTime < b.nameTime;
        const int byName = _wcsicmp(a.name.c_str(), b.name.c_str());
        return byName != 0 ? byName < 0 : pathOrder(a, b) < 0;
    });
    files.erase(std::unique(files.begin(), files.end(),
                            [&](const LogFileEntry& a, const LogFileEntry& b) {
                                return pathOrder(a, b) == 0;
                            }),
                files.end());
    return files;
}

bool CollectLogSet(const std::vector<std::wstring>& arguments, std::vector<LogFileEntry>& files,
                   std::wstring& missing)
{
    for (const std::wstring& argument : arguments) {
        const DWORD attributes = ::GetFileAttributesW(argument.c_str());
        if (attributes == INVALID_FILE_ATTRIBUTES) {
            missing = argument;
            return false;
        }
        if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            files.push_back(MakeLogFileEntry(argument));
            continue;
        }
        ForEachLogFile(argument.c_str(), false, [&](const wchar_t* name) {
            wchar_t path[MAX_PATH];
            JoinLogPath(path, argument.c_str(), name);
            files.push_back(MakeLogFileEntry(path));
        });
    }
    return true;
}
