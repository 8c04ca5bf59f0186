#pragma once
#include <windows.h>

#include "log/LogFormat.h"
#include "ring/MessageRecord.h"

// One log file opened for reading as the log browser opens it: sharing
// reading and writing, so that the window can go on appending while the
// tool reads.
class LogFileReader {
public:
    LogFileReader() = default;
    ~LogFileReader() { Close(); }
    LogFileReader(const LogFileReader&) = delete;
    LogFileReader& operator=(const LogFileReader&) = delete;

    enum class Opened { Accepted, Failed, TooShort, Newer };
    // Opens `path` and applies the readers' header check; Failed leaves the
    // platform's error in Error().
    Opened Open(const wchar_t* path);
    void Close();
    DWORD Error() const { return error_; }

    // The file's size now; -1 when it cannot be had.
    long long Size();
    // The time stamp of the record in `slot`; false when it cannot be read.
    bool TimeAt(int slot, SYSTEMTIME& time);
    // Reads up to `count` whole records from `slot` on into `records`;
    // returns how many came (0 at the end), -1 when a read failed.
    int Read(long long slot, MessageRecord* records, int count);

private:
    bool ReadAt(long long offset, void* bytes, DWORD size, DWORD& read);

    HANDLE file_ = INVALID_HANDLE_VALUE;
    DWORD error_ = 0;
};
