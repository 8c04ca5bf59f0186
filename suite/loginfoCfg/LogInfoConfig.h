#pragma once
#include <cstddef>

// The record the suite's logging configuration library fills.  The program
// uses three of its texts; the rest of the record belongs to the library.
struct LogInfoConfig {
    unsigned char reserved[64];
    wchar_t aboutText[1024];
    wchar_t auxText[1024];
    wchar_t iconFileName[1024];
};
static_assert(offsetof(LogInfoConfig, aboutText) == 64, "aboutText offset");
static_assert(offsetof(LogInfoConfig, auxText) == 2112, "auxText offset");
static_assert(offsetof(LogInfoConfig, iconFileName) == 4160, "iconFileName offset");

// Fills `record` from the configuration file at `path`; 0 on failure.
extern "C" int __stdcall LoadLogCfg(const wchar_t* path, LogInfoConfig* record);
