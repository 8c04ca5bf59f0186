#include "log/LogFormat.h"

#include "ring/MessageRecord.h"

#include <cstdio>
#include <cstring>
#include <cwchar>

void FormatLogVersion(wchar_t (&text)[kLogHeaderTextUnits])
{
    std::memset(text, 0, sizeof(text));
    std::swprintf(text, kLogHeaderTextUnits, L"%f", LogFormatVersion);
}

bool IsNewerLogFormat(const unsigned char (&header)[kLogHeaderTextBytes], bool caseSensitive)
{
    // The stored text need not end with a zero: it is at most 16 units.
    wchar_t stored[kLogHeaderTextUnits];
    std::memcpy(stored, header, sizeof(stored));
    wchar_t current[kLogHeaderTextUnits];
    FormatLogVersion(current);
    const int order = caseSensitive ? std::wcsncmp(stored, current, kLogHeaderTextUnits)
                                    : _wcsnicmp(stored, current, kLogHeaderTextUnits);
    return order > 0;
}

int RecordCountFromSize(DWORD size)
{
    return static_cast<int>(size / kRecordBytes - 1u);
}

void MakeLogFileName(const SYSTEMTIME& time, wchar_t* name)
{
    const int year = time.wYear >= 2000 ? time.wYear - 2000 : time.wYear - 1900;
    std::memset(name, 0, sizeof(wchar_t) * kLogFileNameBufferUnits);
    std::swprintf(name, kLogFileNameBufferUnits, L"%02d%02d%02d%02d%02d", year, time.wMonth,
                  time.wDay, time.wHour, time.wMinute);
    std::wcsncat(name, kLogExtension, kLogFileNameBufferUnits - std::wcslen(name) - 1);
}

namespace {

// The value of the leading decimal digits of a two-unit field; no digit
// gives 0.  Stops at the name's end as well.
WORD FieldValue(const wchar_t* field)
{
    WORD value = 0;
    for (int i = 0; i < 2 && field[i] >= L'0' && field[i] <= L'9'; ++i)
        value = static_cast<WORD>(value * 10 + (field[i] - L'0'));
    return value;
}

} // namespace

bool ParseLogFileTime(const wchar_t* name, FILETIME* time)
{
    // Each field is read only while the previous ones were complete, so a
    // short name never reads past its terminating zero.
    WORD fields[5] = {};
    const size_t length = std::wcslen(name);
    for (size_t i = 0; i < 5 && 2 * i < length; ++i)
        fields[i] = FieldValue(name + 2 * i);

    SYSTEMTIME local = {};
    local.wYear = static_cast<WORD>(fields[0] >= 90 ? 1900 + fields[0] : 2000 + fields[0]);
    local.wMonth = fields[1];
    local.wDay = fields[2];
    local.wHour = fields[3];
    local.wMinute = fields[4];
    FILETIME converted;
    if (!::SystemTimeToFileTime(&local, &converted))
        return false;
    *time = converted;
    return true;
}

bool HasLogExtension(const wchar_t* name, bool caseSensitive)
{
    const wchar_t* dot = std::wcsrchr(name, L'.');
    if (dot == nullptr)
        return false;
    return (caseSensitive ? std::wcscmp(dot, kLogExtension) : _wcsicmp(dot, kLogExtension)) == 0;
}
