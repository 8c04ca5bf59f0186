#include "log/LogRetention.h"

#include "log/LogDirectory.h"
#include "log/LogFormat.h"

#include <cwchar>

double DateSerial(const SYSTEMTIME& time)
{
    const long year = time.wYear;
    const int month = time.wMonth;
    const int day = time.wDay;
    if (year > 9999 || month < 1 || month > 12)
        return 0.0;
    const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    // Days before month m + 1 of a common year, at index m.
    static const int kDaysBefore[13] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};
    const int daysInMonth =
        kDaysBefore[month] - kDaysBefore[month - 1] + (leap && month == 2 && day == 29 ? 1 : 0);
    if (day < 1 || day > daysInMonth || time.wHour > 23 || time.wMinute > 59 || time.wSecond > 59)
        return 0.0;

    long n = year * 365 + year / 4 - year / 100 + year / 400 + kDaysBefore[month - 1] + day;
    if (month <= 2 && leap)
        n -= 1;
    n -= 693959;
    const double fraction = (time.wHour * 3600 + time.wMinute * 60 + time.wSecond) / 86400.0;
    // Before day 0 the fraction counts away from zero, as the date type has it.
    return n >= 0 ? n + fraction : n - fraction;
}

int DeleteOldLogFiles(const wchar_t* saveDirectory, const wchar_t* logFilePath, DWORD saveDays,
                      const SYSTEMTIME& now)
{
    const double limit = DateSerial(now) - static_cast<double>(saveDays);
    ForEachLogFile(saveDirectory, false, [&](const wchar_t* name) {
        // A name without a valid time has no age: it is never deleted.
        FILETIME started;
        SYSTEMTIME local;
        if (!ParseLogFileTime(name, &started) || !::FileTimeToSystemTime(&started, &local))
            return;
        if (!(limit > DateSerial(local)))
            return;
        wchar_t candidate[MAX_PATH];
        JoinLogPath(candidate, saveDirectory, name);
        if (_wcsicmp(candidate, logFilePath) != 0)
            ::DeleteFileW(candidate);
    });
    return 1;
}
