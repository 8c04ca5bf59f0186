#include "log/LogFormat.h"
#include "log/LogRetention.h"

#include "TestClock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>

namespace {

bool Newer(const std::wstring& stored, bool caseSensitive)
{
    unsigned char header[kLogHeaderTextBytes] = {};
    std::memcpy(header, stored.data(), std::min(sizeof(header), stored.size() * 2));
    return IsNewerLogFormat(header, caseSensitive);
}

std::wstring Name(const SYSTEMTIME& time)
{
    wchar_t name[kLogFileNameBufferUnits];
    MakeLogFileName(time, name);
    return name;
}

TEST(LogVersionTest, TextIsTheFixedPointFormOfSeven)
{
    wchar_t text[kLogHeaderTextUnits];
    FormatLogVersion(text);
    EXPECT_EQ(std::wstring(text), L"7.000000");
    EXPECT_EQ(text[kLogHeaderTextUnits - 1], L'\0');
}

TEST(LogVersionTest, ComparisonIsByStringNotByNumber)
{
    for (bool caseSensitive : {false, true}) {
        EXPECT_FALSE(Newer(L"7.000000", caseSensitive));
        EXPECT_FALSE(Newer(L"6.000000", caseSensitive));
        EXPECT_FALSE(Newer(L"10.000000", caseSensitive));
        EXPECT_FALSE(Newer(L"", caseSensitive));
        EXPECT_TRUE(Newer(L"7.000001", caseSensitive));
        EXPECT_TRUE(Newer(L"7.500000", caseSensitive));
        EXPECT_TRUE(Newer(L"8.000000", caseSensitive));
        // 16 units and no terminating zero: read as 16 units, longer than ours.
        EXPECT_TRUE(Newer(L"7.00000000000000", caseSensitive));
    }
}

TEST(RecordCountTest, WholeSlotsAfterTheHeader)
{
    EXPECT_EQ(RecordCountFromSize(272), 0);
    EXPECT_EQ(RecordCountFromSize(272 * 101), 100);
    EXPECT_EQ(RecordCountFromSize(272 * 3 + 100), 2);
    EXPECT_EQ(RecordCountFromSize(32), -1);
    EXPECT_EQ(RecordCountFromSize(271), -1);
}

TEST(LogFileNameTest, NamedByTheMinute)
{
    EXPECT_EQ(Name(LocalTime(2026, 3, 3, 14, 5, 10)), L"2603031405.qxl");
    EXPECT_EQ(Name(LocalTime(2026, 3, 3, 14, 5, 50)), L"2603031405.qxl");
    EXPECT_EQ(Name(LocalTime(1999, 12, 31, 11, 59)), L"9912311159.qxl");
    EXPECT_EQ(Name(LocalTime(2000, 1, 1, 0, 0)), L"0001010000.qxl");
}

TEST(LogFileNameTest, YearTwentyOneHundredFillsTheBuffer)
{
    const std::wstring name = Name(LocalTime(2100, 3, 3, 14, 5));
    EXPECT_EQ(name, L"10003031405.qxl");
    EXPECT_EQ(name.size(), static_cast<size_t>(kLogFileNameUnits));
}

struct ParsedTime {
    bool parsed;
    SYSTEMTIME time;
};

ParsedTime Parse(const wchar_t* name)
{
    FILETIME sentinel = {0x12345678, 0x01ABCDEF};
    FILETIME file = sentinel;
    ParsedTime result = {ParseLogFileTime(name, &file), {}};
    if (!result.parsed) {
        EXPECT_EQ(file.dwLowDateTime, sentinel.dwLowDateTime) << "unchanged on failure";
        EXPECT_EQ(file.dwHighDateTime, sentinel.dwHighDateTime);
    } else {
        EXPECT_TRUE(::FileTimeToSystemTime(&file, &result.time));
    }
    return result;
}

void ExpectTime(const wchar_t* name, WORD year, WORD month, WORD day, WORD hour, WORD minute)
{
    const ParsedTime parsed = Parse(name);
    ASSERT_TRUE(parsed.parsed) << name;
    EXPECT_EQ(parsed.time.wYear, year) << name;
    EXPECT_EQ(parsed.time.wMonth, month) << name;
    EXPECT_EQ(parsed.time.wDay, day) << name;
    EXPECT_EQ(parsed.time.wHour, hour) << name;
    EXPECT_EQ(parsed.time.wMinute, minute) << name;
    EXPECT_EQ(parsed.time.wSecond, 0) << name;
}

TEST(ParseLogFileTimeTest, TwoDigitYearsPivotAtNinety)
{
    ExpectTime(L"9912311159.qxl", 1999, 12, 31, 11, 59);
    ExpectTime(L"9001010000.qxl", 1990, 1, 1, 0, 0);
    ExpectTime(L"8901010000.qxl", 2089, 1, 1, 0, 0);
    ExpectTime(L"2603031405.qxl", 2026, 3, 3, 14, 5);
}

TEST(ParseLogFileTimeTest, FieldsTakeTheirLeadingDigitsOnly)
{
    ExpectTime(L"260303145.qxl", 2026, 3, 3, 14, 5);   // minute field "5."
    ExpectTime(L"2603031x05.qxl", 2026, 3, 3, 1, 5);   // hour field "1x"
    ExpectTime(L"26030314x5.qxl", 2026, 3, 3, 14, 0);  // minute field "x5"
}

TEST(ParseLogFileTimeTest, InvalidTimesLeaveTheOutputAlone)
{
    for (const wchar_t* name : {L"2600031405.qxl", L"2613031405.qxl", L"2603001405.qxl",
                                L"2602301405.qxl", L"2603032405.qxl", L"abcdefghij.qxl", L"1.qxl",
                                L"", L"10003031405.qxl"}) {
        EXPECT_FALSE(Parse(name).parsed) << name;
    }
}

TEST(LogExtensionTest, ExactAtStartUpAnyCaseInTheSweep)
{
    EXPECT_TRUE(HasLogExtension(L"2603031405.qxl", true));
    EXPECT_FALSE(HasLogExtension(L"2603031405.QXL", true));
    EXPECT_TRUE(HasLogExtension(L"2603031405.QXL", false));
    EXPECT_TRUE(HasLogExtension(L"a.b.qxl", true));
    for (bool caseSensitive : {false, true}) {
        EXPECT_FALSE(HasLogExtension(L"2603031405.qxl.bak", caseSensitive));
        EXPECT_FALSE(HasLogExtension(L"2603031405.qxlx", caseSensitive));
        EXPECT_FALSE(HasLogExtension(L"qxl", caseSensitive));
    }
}

TEST(DateSerialTest, DaysSinceTheEndOf1899)
{
    EXPECT_DOUBLE_EQ(DateSerial(LocalTime(1899, 12, 30, 0, 0)), 0.0);
    EXPECT_DOUBLE_EQ(DateSerial(LocalTime(1900, 1, 1, 12, 0)), 2.5);
    EXPECT_DOUBLE_EQ(DateSerial(LocalTime(1899, 12, 29, 6, 0)), -1.25);
    EXPECT_DOUBLE_EQ(DateSerial(LocalTime(2024, 2, 29, 18, 0)), 45351.75);
    EXPECT_DOUBLE_EQ(DateSerial(LocalTime(2026, 3, 13, 14, 5, 30)),
                     46094.0 + (14 * 3600 + 5 * 60 + 30) / 86400.0);
}

TEST(DateSerialTest, InvalidDatesGiveZero)
{
    EXPECT_DOUBLE_EQ(DateSerial(LocalTime(2025, 2, 29, 12, 0)), 0.0);
    EXPECT_DOUBLE_EQ(DateSerial(LocalTime(1900, 2, 29, 12, 0)), 0.0);
    EXPECT_GT(DateSerial(LocalTime(2000, 2, 29, 12, 0)), 0.0);
    EXPECT_DOUBLE_EQ(DateSerial(LocalTime(2026, 13, 1, 0, 0)), 0.0);
    EXPECT_DOUBLE_EQ(DateSerial(LocalTime(2026, 0, 1, 0, 0)), 0.0);
    EXPECT_DOUBLE_EQ(DateSerial(LocalTime(2026, 4, 31, 0, 0)), 0.0);
    EXPECT_DOUBLE_EQ(DateSerial(LocalTime(2026, 4, 1, 24, 0)), 0.0);
    EXPECT_DOUBLE_EQ(DateSerial(LocalTime(2026, 4, 1, 0, 60)), 0.0);
    EXPECT_DOUBLE_EQ(DateSerial(LocalTime(2026, 4, 1, 0, 0, 60)), 0.0);
    EXPECT_DOUBLE_EQ(DateSerial(LocalTime(10000, 1, 1, 0, 0)), 0.0);
}

} // namespace
