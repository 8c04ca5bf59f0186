#include "TestLogs.h"

#include "support/LogFileDecoder.h"

#include <stdexcept>

SYSTEMTIME LocalAt(WORD day, WORD hour, WORD minute, WORD second, WORD ms)
{
    return SYSTEMTIME{2026, 11, 0, day, hour, minute, second, ms};
}

std::vector<unsigned char> LogImage(const std::vector<TestRecord>& records)
{
    std::vector<unsigned char> image = MakeLogImage(L"7.000000", records.size());
    for (size_t i = 0; i < records.size(); ++i)
        PutLogRecord(image, i, records[i].text, records[i].time);
    return image;
}

std::vector<unsigned char> RecordBytes(const TestRecord& record)
{
    const std::vector<unsigned char> image = LogImage({record});
    return std::vector<unsigned char>(image.begin() + 272, image.end());
}

void AppendFileBytes(const std::wstring& path, const std::vector<unsigned char>& bytes)
{
    HANDLE file = ::CreateFileW(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        throw std::runtime_error("cannot open a test log to append");
    DWORD written = 0;
    ::WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    ::CloseHandle(file);
}
