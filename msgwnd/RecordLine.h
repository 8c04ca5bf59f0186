#pragma once
#include <cstddef>

struct MessageRecord;

// Longest line a record formats to; callers' buffers hold one more unit.
constexpr std::size_t kRecordLineChars = 158;
constexpr std::size_t kRecordLineBuffer = kRecordLineChars + 1;

// Writes the display line of `record` (the empty string for none) into
// `buffer` (at least kRecordLineBuffer units), with the record line format of
// the language module, which is loaded anew for every line.  Returns its length.
int FormatRecordLine(wchar_t* buffer, const MessageRecord* record);
