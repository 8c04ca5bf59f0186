#pragma once
#include <windows.h>

// Days since 30 December 1899 00:00, the time of day as the fraction (the
// OLE Automation date).  Seconds are the smallest unit.  0.0 when `time` is
// not a valid date and time.
double DateSerial(const SYSTEMTIME& time);

// Deletes every log file in `saveDirectory` whose name says it was started
// more than `saveDays` days before `now`, except `logFilePath`.  Upper-case
// extensions count here.  Nothing is reported; a file that cannot be
// deleted is tried again next time.  Returns 1.
int DeleteOldLogFiles(const wchar_t* saveDirectory, const wchar_t* logFilePath, DWORD saveDays,
                      const SYSTEMTIME& now);
