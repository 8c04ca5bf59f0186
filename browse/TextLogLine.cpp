#include "browse/TextLogLine.h"

#include <algorithm>
#include <cwchar>

namespace {

struct Column {
    int position;
    int width;
    WORD SYSTEMTIME::*field;
};

constexpr Column kColumns[] = {
    {0, 4, &SYSTEMTIME::wYear},   {5, 2, &SYSTEMTIME::wMonth},   {8, 2, &SYSTEMTIME::wDay},
    {11, 2, &SYSTEMTIME::wHour},  {14, 2, &SYSTEMTIME::wMinute}, {17, 2, &SYSTEMTIME::wSecond},
};

// The column's characters alone, read as the runtime reads a decimal
// number: leading white space and a sign allowed, stopping at the first
// non-digit, no digits giving 0.  A negative value wraps in the 16-bit field.
WORD ColumnValue(const TextLogLine& line, const Column& column)
{
    wchar_t digits[5] = {};
    std::wmemcpy(digits, line + column.position, static_cast<size_t>(column.width));
    return static_cast<WORD>(std::wcstol(digits, nullptr, 10));
}

const wchar_t* LineEnd(const wchar_t* from, const TextLogLine& line)
{
    return std::find(from, line + kTextLogLineUnits, L'\0');
}

} // namespace

void TrimLineFeed(TextLogLine& line)
{
    const auto length = LineEnd(line, line) - line;
    if (length > 0 && line[length - 1] == L'\n')
        line[length - 1] = L'\0';
}

void FillRecordFromLine(const TextLogLine& line, MessageRecord& record)
{
    for (const Column& column : kColumns)
        record.time.*column.field = ColumnValue(line, column);
    record.time.wMilliseconds = 0;
    // At most 108 units: the text always ends inside the record's field.
    const wchar_t* text = line + kTextLogTextColumn;
    const wchar_t* end = LineEnd(text, line);
    std::copy(text, end, record.text);
    record.text[end - text] = L'\0';
}
