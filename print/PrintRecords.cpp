#include "print/PrintRecords.h"

#include <cstring>

#include "msgwnd/MessageRecord.h"
#include "print/FileErrorBox.h"

bool FileRecordTimes::operator()(int slot, SYSTEMTIME& time) const
{
    if (::SetFilePointer(file_, slot * static_cast<LONG>(kRecordBytes), nullptr, FILE_BEGIN) ==
        INVALID_SET_FILE_POINTER) {
        ReportFileErrorWithoutWindow();
        return false;
    }
    MessageRecord record;
    DWORD read = 0;
    if (!::ReadFile(file_, &record, kRecordBytes, &read, nullptr)) {
        ReportFileErrorWithoutWindow();
        return false;
    }
    if (read < kRecordBytes)
        return false;
    time = record.time;
    return true;
}

bool SelectPrintRecords(HANDLE file, int printRange, const SYSTEMTIME& rangeFrom,
                        const SYSTEMTIME& rangeTo, int* first, int* last)
{
    const DWORD size = ::SetFilePointer(file, 0, nullptr, FILE_END);
    if (size == INVALID_SET_FILE_POINTER) {
        ReportFileErrorWithoutWindow();
        return false;
    }
    RecordSpan span;
    if (!SelectRecordSpan(printRange, rangeFrom, rangeTo, static_cast<int>(size / kRecordBytes),
                          FileRecordTimes(file), span))
        return false;
    *first = span.first;
    *last = span.last;
    return true;
}

int ReadPrintPage(HANDLE file, int first, int last, int printed, int linesPerPage, void* buffer)
{
    const int start = first + printed;
    if (file == INVALID_HANDLE_VALUE || start > last)
        return -1;
    if (::SetFilePointer(file, start * static_cast<LONG>(kRecordBytes), nullptr, FILE_BEGIN) ==
        INVALID_SET_FILE_POINTER) {
        ReportFileErrorWithoutWindow();
        return -1;
    }
    std::memset(buffer, 0, kRecordBytes);
    const int count = start + linesPerPage - 1 > last ? last - start + 1 : linesPerPage;
    DWORD read = 0;
    if (count >= 1 && !::ReadFile(file, buffer, count * kRecordBytes, &read, nullptr)) {
        ReportFileErrorWithoutWindow();
        return -1;
    }
    return static_cast<int>(read / kRecordBytes);
}
