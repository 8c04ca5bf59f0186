#pragma once
#include <windows.h>

// Orders two local time records by their moment, milliseconds included:
// -1, 0 or 1 as `a` is earlier than, equal to or later than `b`.  The day of
// the week plays no part.
//
// A record the platform refuses to convert to a file time (all zeros, month
// 0, a year before 1601, second 60...) counts as the earliest moment there
// is: two such records are equal, and each is earlier than every valid time.
// A zero-filled slot inside a log therefore never stops a range search; it
// only sorts before its neighbours.
int CompareLocalTimes(const SYSTEMTIME& a, const SYSTEMTIME& b);
