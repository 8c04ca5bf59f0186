#pragma once
#include <windows.h>

#include "print/RecordBounds.h"

// The print job's reads from the log file through an open read handle.
// Every failing seek or read is reported (ReportFileErrorWithoutWindow).

// The time stamp of the record in slot `slot` of an open log file; false
// when it cannot be read (a short read is not reported).
class FileRecordTimes {
public:
    explicit FileRecordTimes(HANDLE file) : file_(file) {}
    bool operator()(int slot, SYSTEMTIME& time) const;

private:
    HANDLE file_;
};

// The slots of the range to print in the open log `file`.  A log without
// records gives first = last = -1.  False when the file's size cannot be
// taken or the range kind is unknown.
bool SelectPrintRecords(HANDLE file, int printRange, const SYSTEMTIME& rangeFrom,
                        const SYSTEMTIME& rangeTo, int* first, int* last);

// Reads the next page: up to `linesPerPage` records from slot first +
// printed, no further than `last`, into `buffer` (linesPerPage records).
// Returns the records read (0 at the end of the file), or -1 when the page
// starts after `last` or a seek or read fails.
int ReadPrintPage(HANDLE file, int first, int last, int printed, int linesPerPage, void* buffer);
