#pragma once
#include <windows.h>

// "Now" for the log writer under test: whatever the test last set.
extern SYSTEMTIME testNow;
void WINAPI TestClock(LPSYSTEMTIME now);

SYSTEMTIME LocalTime(WORD year, WORD month, WORD day, WORD hour, WORD minute, WORD second = 0);

// A time as a number that orders like the time itself.
inline ULONGLONG Ticks(const SYSTEMTIME& time)
{
    FILETIME file = {};
    ::SystemTimeToFileTime(&time, &file);
    return (static_cast<ULONGLONG>(file.dwHighDateTime) << 32) | file.dwLowDateTime;
}
