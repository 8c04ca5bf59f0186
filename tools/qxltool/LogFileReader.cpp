#include "tools/qxltool/LogFileReader.h"

#include "log/LogFileIo.h"
#include "view/FileLineSource.h"

LogFileReader::Opened LogFileReader::Open(const wchar_t* path)
{
    Close();
    file_ = OpenSavedLog(path);
    if (file_ == INVALID_HANDLE_VALUE) {
        error_ = ::GetLastError();
        return Opened::Failed;
    }
    unsigned char header[kLogHeaderTextBytes];
    switch (ReadLogHeader(file_, header)) {
    case HeaderRead::Complete:
        return IsNewerLogFormat(header, false) ? Opened::Newer : Opened::Accepted;
    case HeaderRead::TooShort:
        return Opened::TooShort;
    default:
        error_ = ::GetLastError();
        return Opened::Failed;
    }
}

void LogFileReader::Close()
{
    if (file_ != INVALID_HANDLE_VALUE)
        ::CloseHandle(file_);
    file_ = INVALID_HANDLE_VALUE;
}

long long LogFileReader::Size()
{
    LARGE_INTEGER size;
    if (!::GetFileSizeEx(file_, &size)) {
        error_ = ::GetLastError();
        return -1;
    }
    return size.QuadPart;
}

bool LogFileReader::ReadAt(long long offset, void* bytes, DWORD size, DWORD& read)
{
    LARGE_INTEGER position;
    position.QuadPart = offset;
    read = 0;
    if (!::SetFilePointerEx(file_, position, nullptr, FILE_BEGIN) ||
        !::ReadFile(file_, bytes, size, &read, nullptr)) {
        error_ = ::GetLastError();
        return false;
    }
    return true;
}

bool LogFileReader::TimeAt(int slot, SYSTEMTIME& time)
{
    DWORD read = 0;
    return ReadAt(static_cast<long long>(slot) * kRecordBytes, &time, sizeof(time), read) &&
           read == sizeof(time);
}

int LogFileReader::Read(long long slot, MessageRecord* records, int count)
{
    DWORD read = 0;
    if (!ReadAt(slot * kRecordBytes, records, static_cast<DWORD>(count) * kRecordBytes, read))
        return -1;
    return static_cast<int>(read / kRecordBytes);
}
