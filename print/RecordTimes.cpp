#include "print/RecordTimes.h"

#include "log/LogFileIo.h"
#include "log/LogFormat.h"
#include "msgwnd/MessageRecord.h"

namespace {

// The record at `offset` from `origin`; false with `shortRead` set when the
// file has no whole record there.
bool ReadRecordAt(HANDLE file, LONG offset, DWORD origin, MessageRecord& record, bool& shortRead)
{
    shortRead = false;
    if (!SeekLogFile(file, offset, origin))
        return false;
    DWORD read = 0;
    if (!::ReadFile(file, &record, kRecordBytes, &read, nullptr))
        return false;
    shortRead = read < kRecordBytes;
    return !shortRead;
}

} // namespace

RecordTimesRead ReadRecordTimes(HANDLE file, SYSTEMTIME* firstRecordTime, SYSTEMTIME* lastRecordTime)
{
    unsigned char header[kLogHeaderTextBytes];
    switch (ReadLogHeader(file, header)) {
    case HeaderRead::SeekFailed: return RecordTimesRead::HeaderSeekFailed;
    case HeaderRead::ReadFailed: return RecordTimesRead::HeaderReadFailed;
    case HeaderRead::TooShort: return RecordTimesRead::HeaderTooShort;
    case HeaderRead::Complete: break;
    }
    if (IsNewerLogFormat(header, false))
        return RecordTimesRead::NewerFormat;

    MessageRecord first;
    MessageRecord last;
    bool shortRead = false;
    if (!ReadRecordAt(file, kRecordBytes, FILE_BEGIN, first, shortRead) ||
        !ReadRecordAt(file, -static_cast<LONG>(kRecordBytes), FILE_END, last, shortRead))
        return shortRead ? RecordTimesRead::NoRecord : RecordTimesRead::RecordReadFailed;
    *firstRecordTime = first.time;
    *lastRecordTime = last.time;
    return RecordTimesRead::Complete;
}
