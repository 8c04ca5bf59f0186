#pragma once
#include <windows.h>

// "Now" for the log writer under test: whatever the test last set.
extern SYSTEMTIME testNow;
void WINAPI TestClock(LPSYSTEMTIME now);

SYSTEMTIME LocalTime(WORD year, WORD month, WORD day, WORD hour, WORD minute, WORD second = 0);
