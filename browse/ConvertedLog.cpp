#include "browse/ConvertedLog.h"

#include "winlayer/Resources.h"

#include <cstring>
#include <cwchar>
#include <shlwapi.h>

namespace {
constexpr wchar_t kTextLogExtension[] = L".log";
constexpr wchar_t kConvertedSuffix[] = L"00";
} // namespace

bool IsTextLogPath(const wchar_t* path)
{
    return _wcsicmp(::PathFindExtensionW(path), kTextLogExtension) == 0;
}

bool MakeConvertedLogPath(const wchar_t* textLogPath, wchar_t (&convertedPath)[MAX_PATH])
{
    const wchar_t* extension = ::PathFindExtensionW(textLogPath);
    const size_t stem = static_cast<size_t>(extension - textLogPath);
    const size_t added = std::wcslen(kConvertedSuffix) + std::wcslen(kLogExtension);
    if (stem + added >= MAX_PATH)
        return false;
    winlayer::FormatText(convertedPath, MAX_PATH, L"%.*s%s%s", static_cast<int>(stem), textLogPath,
                         kConvertedSuffix, kLogExtension);
    return true;
}

bool IsReusableConversion(const unsigned char (&header)[kLogHeaderTextBytes])
{
    // The stored text need not end with a zero: it is at most 16 units.
    wchar_t stored[kLogHeaderTextUnits];
    std::memcpy(stored, header, sizeof(stored));
    wchar_t current[kLogHeaderTextUnits];
    FormatLogVersion(current);
    return std::wcsncmp(stored, current, kLogHeaderTextUnits) == 0;
}
