#pragma once
#include <windows.h>

// What the print setup command reads before it opens the dialog, so that
// the dialog can refuse times outside the log: the header (the version
// check) and the time stamps of the first record (slot 1) and of the last
// (the 272 bytes before the end of the file, whole slot or not).
enum class RecordTimesRead {
    Complete,
    HeaderSeekFailed,  // report the error; the handle is still open
    HeaderReadFailed,  // report the error
    HeaderTooShort,    // silent
    NewerFormat,       // close the file, then show string 32804
    RecordReadFailed,  // a seek or read of a record failed: report, close
    NoRecord,          // fewer than 272 bytes came: close, silently
};

// Reads through `file`, an open read handle on a log.  The times are set
// only on Complete.  The caller reports and closes as each result says: the
// main window through the log writer's report, a browser through its own.
RecordTimesRead ReadRecordTimes(HANDLE file, SYSTEMTIME* firstRecordTime, SYSTEMTIME* lastRecordTime);
