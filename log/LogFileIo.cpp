#include "log/LogFileIo.h"

#include "ring/MessageRecord.h"

#include <cstring>

HANDLE OpenLogFile(const wchar_t* path, DWORD access, DWORD disposition, DWORD share)
{
    SECURITY_ATTRIBUTES inheritable = {};
    inheritable.nLength = sizeof(inheritable);
    inheritable.lpSecurityDescriptor = nullptr;
    inheritable.bInheritHandle = TRUE;
    return ::CreateFileW(path, access, share, &inheritable, disposition,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
}

bool SeekLogFile(HANDLE file, LONG offset, DWORD method, DWORD* position)
{
    const DWORD moved = ::SetFilePointer(file, offset, nullptr, method);
    if (moved == INVALID_SET_FILE_POINTER)
        return false;
    if (position != nullptr)
        *position = moved;
    return true;
}

HeaderRead ReadLogHeader(HANDLE file, unsigned char (&header)[kLogHeaderTextBytes])
{
    std::memset(header, 0, sizeof(header));
    if (!SeekLogFile(file, 0, FILE_BEGIN))
        return HeaderRead::SeekFailed;
    DWORD read = 0;
    if (!::ReadFile(file, header, sizeof(header), &read, nullptr))
        return HeaderRead::ReadFailed;
    return read < sizeof(header) ? HeaderRead::TooShort : HeaderRead::Complete;
}

WriteResult WriteLogBytes(HANDLE file, const void* bytes, DWORD size)
{
    DWORD written = 0;
    if (!::WriteFile(file, bytes, size, &written, nullptr))
        return WriteResult::Failed;
    return written < size ? WriteResult::Short : WriteResult::Complete;
}

bool WriteLogHeader(HANDLE file)
{
    const unsigned char zeroSlot[kRecordBytes] = {};
    wchar_t version[kLogHeaderTextUnits];
    FormatLogVersion(version);
    return SeekLogFile(file, 0, FILE_BEGIN) &&
           WriteLogBytes(file, zeroSlot, sizeof(zeroSlot)) != WriteResult::Failed &&
           SeekLogFile(file, 0, FILE_BEGIN) &&
           WriteLogBytes(file, version, sizeof(version)) != WriteResult::Failed;
}
