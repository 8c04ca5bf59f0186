#include "log/LogFormat.h"
#include "log/LogRetention.h"

#include "LogFixture.h"

#include <algorithm>
#include <cstdio>
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

TEST(LogVersionTest, TextIsSevenAndComparisonIsByStringNotByNumber)
{
    wchar_t text[kLogHeaderTextUnits];
    FormatLogVersion(text);
    EXPECT_EQ(std::wstring(text), L"7.000000");
    EXPECT_EQ(text[kLogHeaderTextUnits - 1], L'\0');
    for (bool caseSensitive : {false, true}) {
        for (const wchar_t* older : {L"7.000000", L"6.000000", L"10.000000", L""})
            EXPECT_FALSE(Newer(older, caseSensitive)) << older;
        // The last has 16 units and no terminating zero: longer than ours.
        for (const wchar_t* newer : {L"7.000001", L"7.500000", L"8.000000", L"7.00000000000000"})
            EXPECT_TRUE(Newer(newer, caseSensitive)) << newer;
    }
}

TEST(LogFileNameTest, NamedByTheMinute)
{
    EXPECT_EQ(Name(LocalTime(2026, 3, 3, 14, 5, 50)), L"2603031405.qxl");
    EXPECT_EQ(Name(LocalTime(1999, 12, 31, 11, 59)), L"9912311159.qxl");
    EXPECT_EQ(Name(LocalTime(2000, 1, 1, 0, 0)), L"0001010000.qxl");
    // The year 2100 fills the buffer.
    EXPECT_EQ(Name(LocalTime(2100, 3, 3, 14, 5)), L"10003031405.qxl");
}

// The parsed time as "YYYY-MM-DD HH:MM:SS", or "none".
std::string Parse(const wchar_t* name)
{
    FILETIME file = {};
    SYSTEMTIME t = {};
    if (!ParseLogFileTime(name, &file))
        return "none";
    EXPECT_TRUE(::FileTimeToSystemTime(&file, &t));
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", t.wYear, t.wMonth, t.wDay, t.wHour,
                  t.wMinute, t.wSecond);
    return text;
}

TEST(ParseLogFileTimeTest, TwoDigitYearsPivotAtNinetyAndFieldsTakeLeadingDigits)
{
    // Plain names are read in the start-up, retention and qxltool set tests.
    EXPECT_EQ(Parse(L"9001010000.qxl"), "1990-01-01 00:00:00");
    EXPECT_EQ(Parse(L"8901010000.qxl"), "2089-01-01 00:00:00");
    EXPECT_EQ(Parse(L"260303145.qxl"), "2026-03-03 14:05:00");   // minute field "5."
    EXPECT_EQ(Parse(L"2603031x05.qxl"), "2026-03-03 01:05:00");  // hour field "1x"
    EXPECT_EQ(Parse(L"26030314x5.qxl"), "2026-03-03 14:00:00");  // minute field "x5"
    for (const wchar_t* name : {L"2600031405.qxl", L"2613031405.qxl", L"2603001405.qxl", L"2602301405.qxl",
                                L"2603032405.qxl", L"abcdefghij.qxl", L"1.qxl", L"", L"10003031405.qxl"})
        EXPECT_EQ(Parse(name), "none") << name;
}

// Exact at start-up, any case in the sweep: the start-up and retention tests.
TEST(LogExtensionTest, OnlyTheLastDotCounts)
{
    EXPECT_TRUE(HasLogExtension(L"a.b.qxl", true));
    for (bool caseSensitive : {false, true}) {
        EXPECT_FALSE(HasLogExtension(L"2603031405.qxl.bak", caseSensitive));
        EXPECT_FALSE(HasLogExtension(L"2603031405.qxlx", caseSensitive));
        EXPECT_FALSE(HasLogExtension(L"qxl", caseSensitive));
    }
}

TEST(DateSerialTest, DaysSinceTheEndOf1899AndZeroForInvalidDates)
{
    EXPECT_DOUBLE_EQ(DateSerial(LocalTime(1899, 12, 30, 0, 0)), 0.0);
    EXPECT_DOUBLE_EQ(DateSerial(LocalTime(1900, 1, 1, 12, 0)), 2.5);
    EXPECT_DOUBLE_EQ(DateSerial(LocalTime(1899, 12, 29, 6, 0)), -1.25);
    EXPECT_DOUBLE_EQ(DateSerial(LocalTime(2024, 2, 29, 18, 0)), 45351.75);
    EXPECT_DOUBLE_EQ(DateSerial(LocalTime(2026, 3, 13, 14, 5, 30)),
                     46094.0 + (14 * 3600 + 5 * 60 + 30) / 86400.0);
    EXPECT_GT(DateSerial(LocalTime(2000, 2, 29, 12, 0)), 0.0);
    for (const SYSTEMTIME& invalid :
         {LocalTime(2025, 2, 29, 12, 0), LocalTime(1900, 2, 29, 12, 0), LocalTime(2026, 13, 1, 0, 0),
          LocalTime(2026, 0, 1, 0, 0), LocalTime(2026, 4, 31, 0, 0), LocalTime(2026, 4, 1, 24, 0),
          LocalTime(2026, 4, 1, 0, 60), LocalTime(2026, 4, 1, 0, 0, 60), LocalTime(10000, 1, 1, 0, 0)})
        EXPECT_DOUBLE_EQ(DateSerial(invalid), 0.0)
            << invalid.wYear << "-" << invalid.wMonth << "-" << invalid.wDay;
}

} // namespace
