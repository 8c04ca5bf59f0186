#pragma once
#include <cstddef>
#include <string>

#include "ring/MessageRecord.h"
#include "view/RecordLine.h"

// The units of a record's text: up to its first zero unit, at most 128.
std::size_t RecordTextLength(const MessageRecord& record);

enum class OutputFormat {
    Line,  // the window's own line, string 130 of the language module
    Iso,   // "2026-11-23T14:05:10.250 text"
    Csv,   // a header line "time,file,slot,text", then one row a record
    Json,  // one object a line: {"time":..., "file":..., "slot":..., "text":...}
};

// One record as one output line, "\n" included, valid UTF-8 whatever the
// text holds (see TextEncoding.h): text and ISO lines show control
// characters as pictures, CSV quotes, JSON escapes.  A text with an
// unpaired surrogate gets its exact units in hex in "text_utf16le": always
// in JSON, in CSV as a fifth column when asked for.  CSV and JSON name the
// record's file and its slot there (slot 1 is the first record; it lies at
// byte 272 x slot).
class RecordFormatter {
public:
    // `lineFormat` is used by OutputFormat::Line only; `csvUnits` adds the
    // text_utf16le column to CSV.
    RecordFormatter(OutputFormat format, const wchar_t* lineFormat, bool csvUnits = false);

    // What comes before the first record: the CSV header line.
    void AppendHeading(std::string& out) const;
    // The file the next records come from: its name, without the directory.
    void SetFile(const std::wstring& name);
    void Append(std::string& out, long long slot, const MessageRecord& record) const;

private:
    OutputFormat format_;
    bool csvUnits_;
    RecordLineFormatter lineFormatter_;
    std::string fileField_;  // the file name, escaped for the format
};
