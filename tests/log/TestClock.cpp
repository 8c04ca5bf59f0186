#include "TestClock.h"

SYSTEMTIME testNow = {};

void WINAPI TestClock(LPSYSTEMTIME now)
{
    *now = testNow;
}

SYSTEMTIME LocalTime(WORD year, WORD month, WORD day, WORD hour, WORD minute, WORD second)
{
    return {year, month, 0, day, hour, minute, second, 0};
}
