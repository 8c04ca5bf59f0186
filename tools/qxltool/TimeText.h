#pragma once
#include <windows.h>

#include <string>

// Times on the command line and in the output are local times, as the
// records hold them, with no zone: "2026-11-23 14:05:10.250", the separator
// between date and time a space or a "T".

// Which end of the span a time with omitted parts stands for: "--from
// 2026-11-23 14:05" starts at 14:05:00.000, "--to 2026-11-23 14:05" ends at
// 14:05:59.999, so both together give that one minute.
enum class TimeEnd { Start, End };

// Reads "YYYY-MM-DD", optionally followed by "hh:mm", ":ss" and ".f" to
// ".fff" (a fraction of a second: ".5" is 500 ms).  False, with the reason
// in `error`, for anything else or a field out of its range (29 February
// only in leap years).  The day of the week is left 0: no comparison uses it.
bool ParseTimeArgument(const std::wstring& text, TimeEnd end, SYSTEMTIME& time,
                       std::wstring& error);

// Appends "YYYY-MM-DDThh:mm:ss.mmm" with the fields as they stand, also
// when they do not form a valid time (a zero slot gives
// "0000-00-00T00:00:00.000"); a field above its width is written in full.
void AppendIsoTime(std::string& out, const SYSTEMTIME& time);
std::string IsoTime(const SYSTEMTIME& time);
