#pragma once
#include <windows.h>

#include <string>
#include <vector>

// Reads a log file's bytes the way an outside program would, from the
// documented layout alone: little-endian fields, 272-byte slots.
struct DecodedRecord {
    WORD year, month, dayOfWeek, day, hour, minute, second, milliseconds;
    std::wstring text;  // up to the first zero unit, at most 128 units
};

struct DecodedLog {
    std::vector<DecodedRecord> records;
};

DecodedLog DecodeLog(const std::vector<unsigned char>& bytes);

// The one builder of test logs.  A record to be written: a default one is
// all zero, time and text.
struct LogLine {
    std::wstring text;
    SYSTEMTIME time = {};
};

// `count` records "<prefix>0", "<prefix>1"..., stamped a second apart from
// `first` (3 March 2026, 10:00:00.000 unless told).
std::vector<LogLine> NumberedLines(size_t count, const std::wstring& prefix = L"record ",
                                   const SYSTEMTIME& first = {2026, 3, 2, 3, 10, 0, 0, 0});

// A file image: the header slot with `version`, one slot per line, then
// `tail` bytes of 0xAB (a torn record).
std::vector<unsigned char> LogImage(const std::vector<LogLine>& lines,
                                    const std::wstring& version = L"7.000000", size_t tail = 0);

// A file image: the standard header with `version`, then `records` zero
// records, then `tail` bytes of 0xAB.
std::vector<unsigned char> MakeLogImage(const std::wstring& version, size_t records, size_t tail = 0);

// Puts a record with `text` and the time `stamp` into slot `index` + 1 of a
// file image made by MakeLogImage.
void PutLogRecord(std::vector<unsigned char>& image, size_t index, const std::wstring& text,
                  const SYSTEMTIME& stamp);
