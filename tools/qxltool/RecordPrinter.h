#pragma once
#include <string>
#include <vector>

#include "tools/qxltool/LogFileReader.h"
#include "tools/qxltool/OutputStream.h"
#include "tools/qxltool/RangeSlots.h"
#include "tools/qxltool/RecordFormats.h"
#include "tools/qxltool/TextFilter.h"

// Reads stretches of records from log files and prints those that pass
// the time range and the text filters, or only counts them.
class RecordPrinter {
public:
    RecordPrinter(const RecordFormatter& formatter, const TextFilter& filter,
                  const TimeRange& range, bool countOnly, OutputStream& output);

    // The records of `span` from the open file `name`, in large reads.
    // False when a read fails; the reader then holds the error, and
    // Reached() tells where to go on without printing a record twice.
    bool Print(LogFileReader& reader, const std::wstring& name, SlotSpan span);
    // The slot after the last record that the last Print passed on or left out.
    long long Reached() const { return reached_; }
    // False once standard output has gone.
    bool OutputOpen() const { return outputOpen_; }
    long long Matched() const { return matched_; }

private:
    static constexpr int kRecordsPerRead = 1024;

    RecordFormatter formatter_;
    const TextFilter& filter_;
    TimeRange range_;
    bool countOnly_;
    OutputStream& output_;
    bool outputOpen_ = true;
    long long matched_ = 0;
    long long reached_ = 0;
    std::vector<MessageRecord> records_;
};

// What went wrong with a file that could not be read, for the error line.
std::wstring OpenFailureText(LogFileReader::Opened opened, DWORD error);
