#include "loginfoCfg/LogInfoConfig.h"

// Without the suite there is no logging configuration to read: report failure
// so the program takes its fallback texts and icon.
extern "C" int __stdcall LoadLogCfg(const wchar_t* /*path*/, LogInfoConfig* /*record*/)
{
    return 0;
}
