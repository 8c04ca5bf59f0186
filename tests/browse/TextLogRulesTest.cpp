#include "browse/ConvertedLog.h"
#include "browse/TextLogLine.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Stamp = std::vector<WORD>;  // year, month, day of week, day, hour, minute, second, ms

// Reads `piece` into the persistent buffer as a line read does (its
// characters and a zero, nothing behind them touched), fills `record` from
// it and gives the record's stamp.
Stamp Take(TextLogLine& line, MessageRecord& record, const std::wstring& piece)
{
    std::wmemcpy(line, piece.data(), piece.size());
    line[piece.size()] = L'\0';
    TrimLineFeed(line);
    FillRecordFromLine(line, record);
    const SYSTEMTIME& t = record.time;
    return {t.wYear, t.wMonth, t.wDayOfWeek, t.wDay, t.wHour, t.wMinute, t.wSecond, t.wMilliseconds};
}

TEST(TextLogLineTest, EachColumnIsReadAloneAsTheRuntimeReadsNumbers)
{
    TextLogLine line = {};
    MessageRecord record = {};
    record.time.wMilliseconds = 999;
    // White space and a sign first, digits up to a non-digit; any separators.
    EXPECT_EQ(Take(line, record, L" +12#-1# 7#7y#ab#59#text\n"), (Stamp{12, 0xFFFF, 0, 7, 7, 0, 59, 0}));
    EXPECT_STREQ(record.text, L"text");
    // Digits running on into the next column; a piece cut short keeps its end.
    EXPECT_EQ(Take(line, record, L"2026103x04#05:06:07yx"), (Stamp{2026, 3, 0, 4, 5, 6, 7, 0}));
    EXPECT_STREQ(record.text, L"x");
}

TEST(TextLogLineTest, ShortLinesKeepWhatLongerOnesLeft)
{
    TextLogLine line = {};
    MessageRecord record = {};
    Take(line, record, L"2009-03-04 05:06:07 pump started at station 4\n");
    // Columns and text behind a short line's end come from the buffer.
    EXPECT_EQ(Take(line, record, L"short\n"), (Stamp{0, 0, 0, 4, 5, 6, 7, 0}));
    EXPECT_STREQ(record.text, L"pump started at station 4");
    // The tail a shorter text leaves behind its zero: TextLogConversionTest.
}

TEST(ConvertedLogTest, NamedAfterTheTextLogWhenThatFits)
{
    wchar_t converted[MAX_PATH];
    ASSERT_TRUE(MakeConvertedLogPath(L"C:\\a.b\\x.y.LOG", converted));
    EXPECT_STREQ(converted, L"C:\\a.b\\x.y00.qxl");
    const std::wstring stem(253, L'd');  // the longest that fits, with its zero
    ASSERT_TRUE(MakeConvertedLogPath((stem + L".log").c_str(), converted));
    EXPECT_EQ(converted, stem + L"00.qxl");
    EXPECT_FALSE(MakeConvertedLogPath((stem + L"d.log").c_str(), converted));
}

} // namespace
