#include "TestClock.h"

SYSTEMTIME testNow = {};

void WINAPI TestClock(LPSYSTEMTIME now)
{
    *now = testNow;
}

SYSTEMTIME LocalTime(WORD year, WORD month, WORD day, WORD hour, WORD minute, WORD second)
{
    SYSTEMTIME time = {};
    time.wYear = year;
    time.wMonth = month;
    time.wDay = day;
    time.wHour = hour;
    time.wMinute = minute;
    time.wSecond = second;
    return time;
}
