#pragma once
#include "tools/qxltool/QxlOptions.h"

// The four commands; each returns the process's exit code (ExitCodes.h)
// and has reported its errors on standard error.  `lineFormat` is the
// record line format of the language module, for the default output.
int RunDump(const QxlOptions& options, const wchar_t* lineFormat);
int RunFollow(const QxlOptions& options, const wchar_t* lineFormat);
int RunCheck(const QxlOptions& options);
int RunConvert(const QxlOptions& options);
