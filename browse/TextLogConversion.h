#pragma once
#include <windows.h>

// Makes `filePath`, the file a log browser is about to show, a binary log.
// A path whose extension is not ".log" (in any case) is taken as a binary
// log and left alone.  A text log is converted into the binary log beside
// it ("day.log" into "day00.qxl") and `filePath` is set to that file.  An
// earlier conversion is reused as it stands while its header holds exactly
// our version text, even when the text log has grown since; one with any
// other header is deleted and made anew.
//
// `logFile` is the browser's file handle: closed first when open, it holds
// the text log while that is read and is invalid again afterwards.  When an
// earlier conversion's header cannot be read whole, it is left holding that
// file for the browser to close.
//
// Returns 1 when `filePath` names a binary log ready to be opened, 0 when
// the browser must close.  File errors have been reported with the
// platform's text in a box with no owner, a text log that cannot be read as
// text with string 112 in a box owned by `owner`; an earlier conversion
// that cannot be read whole or deleted fails with no message.
int ConvertTextLog(HWND owner, wchar_t (&filePath)[MAX_PATH], HANDLE& logFile);
