#pragma once
#include <windows.h>

#include <string>
#include <vector>

// Log files as the window writes them, for the tool to read.
struct TestRecord {
    SYSTEMTIME time;
    std::wstring text;
};

SYSTEMTIME LocalAt(WORD day, WORD hour, WORD minute, WORD second, WORD ms = 0);

// A file image: our header, then the records.
std::vector<unsigned char> LogImage(const std::vector<TestRecord>& records);
// The bytes of one record, to append to a file.
std::vector<unsigned char> RecordBytes(const TestRecord& record);
void AppendFileBytes(const std::wstring& path, const std::vector<unsigned char>& bytes);
