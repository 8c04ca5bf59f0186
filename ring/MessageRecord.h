#pragma once
#include <windows.h>
#include <cstddef>

// One line as it lives in the ring and, byte for byte, in a log file: the
// local time at which it arrived and a fixed field of 128 UTF-16 units.  The
// text is zero-padded; a text that fills the field has no terminating zero,
// so every reader takes at most kMessageTextUnits units from it.
constexpr int kMessageTextUnits = 128;

struct MessageRecord {
    SYSTEMTIME time;
    wchar_t text[kMessageTextUnits];
};

// The log file format and every reader depend on this exact layout.
static_assert(sizeof(wchar_t) == 2, "records hold UTF-16 code units");
static_assert(sizeof(SYSTEMTIME) == 16, "eight 16-bit time fields");
static_assert(offsetof(MessageRecord, time) == 0, "time stamp first");
static_assert(offsetof(MessageRecord, text) == 16, "text follows the time stamp");
static_assert(sizeof(MessageRecord) == 272, "a record is 272 bytes on disk");

constexpr unsigned kRecordBytes = sizeof(MessageRecord);
