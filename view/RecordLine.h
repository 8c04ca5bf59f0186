#pragma once
#include <cstddef>

struct MessageRecord;

// Longest line a record formats to; callers' buffers hold one more unit.
constexpr std::size_t kRecordLineChars = 158;
constexpr std::size_t kRecordLineBuffer = kRecordLineChars + 1;
// Room for the line format of the language module.
constexpr int kRecordLineFormatUnits = 256;

// Writes the display line of `record` (the empty string for none) into
// `buffer` (at least kRecordLineBuffer units), with the record line format of
// the language module, which is loaded anew for every line: the view has
// always done so.  Returns its length.
int FormatRecordLine(wchar_t* buffer, const MessageRecord* record);

// The same line for many records with one load of the format: export, print
// and the command-line tool format whole files.
class RecordLineFormatter {
public:
    RecordLineFormatter();
    // A formatter with a format of the caller's (the tool's --lang choice).
    explicit RecordLineFormatter(const wchar_t* format);

    int Format(wchar_t* buffer, const MessageRecord& record) const;

private:
    wchar_t format_[kRecordLineFormatUnits] = {};
};
