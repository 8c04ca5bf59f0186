#pragma once
#include <windows.h>

// The binary log file: a 272-byte header slot, then one MessageRecord per
// line.  A file is named by the local minute at which it was started.

constexpr double LogFormatVersion = 7.0;

// The header starts with the version text, "%f" of LogFormatVersion,
// zero-padded to 32 bytes; the rest of the slot is zero.
constexpr int kLogHeaderTextBytes = 32;
constexpr int kLogHeaderTextUnits = kLogHeaderTextBytes / 2;

// "7.000000", zero-filled to kLogHeaderTextUnits units.
void FormatLogVersion(wchar_t (&text)[kLogHeaderTextUnits]);

// True when the version text in the first 32 bytes of a file sorts after
// ours, i.e. a newer program wrote the file.  The comparison is a plain
// string comparison on purpose: "10.000000" and "6.000000" pass, "7.5" and
// "8.000000" do not, and an all-zero header passes.  Start-up compares
// case-sensitively, everyone else case-insensitively.
bool IsNewerLogFormat(const unsigned char (&header)[kLogHeaderTextBytes], bool caseSensitive);

// Records in a file of `size` bytes.  The division is unsigned, so a torn
// header slot of 32..271 bytes gives -1, which callers take as it is.
int RecordCountFromSize(DWORD size);

constexpr wchar_t kLogExtension[] = L".qxl";
// The longest name (year 2100 on: a three-digit year field) is 15 units;
// name buffers have one more for the terminating zero.
constexpr int kLogFileNameUnits = 15;
constexpr int kLogFileNameBufferUnits = kLogFileNameUnits + 1;

// "YYMMDDHHmm.qxl" for `time`, into `name` of kLogFileNameBufferUnits units.
void MakeLogFileName(const SYSTEMTIME& time, wchar_t* name);

// Reads the start time back from the first ten characters of `name`.  When
// they do not form a valid time, returns false and leaves `time` unchanged.
bool ParseLogFileTime(const wchar_t* name, FILETIME* time);

// Whether the part of `name` from its last dot is ".qxl".  Start-up looks
// for the exact lower-case extension, the retention sweep ignores case.
bool HasLogExtension(const wchar_t* name, bool caseSensitive);
