#pragma once
#include "log/LogFormat.h"

#include <windows.h>

// An older text log is converted once into a binary log beside it, which
// later openings reuse.

// Whether `path` names a text log: its extension is ".log", in any case.
bool IsTextLogPath(const wchar_t* path);

// The binary log a text log converts into: the text log's path without its
// extension, then "00" and ".qxl" ("C:\logs\day.log" gives
// "C:\logs\day00.qxl").  False when that does not fit in MAX_PATH units.
bool MakeConvertedLogPath(const wchar_t* textLogPath, wchar_t (&convertedPath)[MAX_PATH]);

// Whether an earlier conversion with this header may be reused: only when
// it holds exactly our version text.  Stricter than the readers' check,
// which accepts every text not sorting after ours; anything else here is
// converted anew.
bool IsReusableConversion(const unsigned char (&header)[kLogHeaderTextBytes]);
