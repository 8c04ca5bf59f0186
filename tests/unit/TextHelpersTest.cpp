#include <gtest/gtest.h>

#include <cwchar>
#include <random>

#include "ring/MessageRecord.h"
#include "view/RecordLine.h"
#include "winlayer/Resources.h"

using winlayer::FormatText;
using winlayer::JoinPath;

TEST(FormatText, FollowsThePlatformWideConventionCutsAtCapacityAndAlwaysTerminates)
{
    wchar_t out[64];
    // %s takes a wide string here, as the language modules' formats expect.
    int n = FormatText(out, 64, L"%04d-%02d %s|%d", 2026, 3, L"pump 3 \x6D41", 7);
    EXPECT_STREQ(L"2026-03 pump 3 \x6D41|7", out);
    EXPECT_EQ(static_cast<int>(std::wcslen(out)), n);
    for (const wchar_t* text : {L"0123456789", L"0123456"}) {  // too long, exactly capacity - 1
        std::wmemset(out, L'#', 9);
        EXPECT_EQ(7, FormatText(out, 8, L"%s", text));
        EXPECT_STREQ(L"0123456", out);
        EXPECT_EQ(L'#', out[8]);
    }
    EXPECT_EQ(0, FormatText(out, 8, L"%s", L""));
    EXPECT_STREQ(L"", out);
}

// The formatter writes the formats it can itself: its line must be the C
// runtime's, to the unit and to the cut at 158, and the formats it must
// leave to the runtime must reach it.
TEST(RecordLineFormatter, WritesWhatTheRuntimeWritesForAnyFormat)
{
    const wchar_t* const formats[] = {
        L"%04d-%02d-%02d %02d:%02d:%02d.%03d  %s", L"%d/%i %5d|%2d %3d:%00d.%01d %s 100%%",
        L"%%%99d%99d%d%d%d%d%d %s", L"%04d%02d", L"no numbers at all", L"%-6d%+d%5.3d %x%u%hd%ld%s",
        L"%04d-%02d-%02d %02d:%02d:%02d.%03d  %.3s|", L"%d%d%d%d%d%d%d%05s", L"%d%d%d%d%d%d%d%S",
        L"%d%d%d%d%d%d%d%10s", L"%d%d%d%d%d%d%d%-s", L"%100d", L"%d%"};
    std::mt19937 random(20);
    for (const wchar_t* format : formats) {
        const RecordLineFormatter formatter(format);
        for (int round = 0; round < 50; ++round) {
            MessageRecord record = {};
            WORD* fields[] = {&record.time.wYear,   &record.time.wMonth,  &record.time.wDay,
                              &record.time.wHour,   &record.time.wMinute, &record.time.wSecond,
                              &record.time.wMilliseconds};
            for (WORD* field : fields)
                *field = static_cast<WORD>(round % 5 == 0 ? 65535 * (round % 2) : random() % 70000);
            const int textUnits = round % 3 == 0 ? kMessageTextUnits : static_cast<int>(random() % 128);
            for (int i = 0; i < textUnits; ++i)
                record.text[i] = static_cast<wchar_t>(L' ' + random() % 0x4000);
            wchar_t text[kMessageTextUnits + 1] = {};
            std::wmemcpy(text, record.text, kMessageTextUnits);
            wchar_t expected[kRecordLineBuffer], line[kRecordLineBuffer];
            const int length = FormatText(expected, kRecordLineBuffer, format, record.time.wYear,
                                          record.time.wMonth, record.time.wDay, record.time.wHour,
                                          record.time.wMinute, record.time.wSecond,
                                          record.time.wMilliseconds, text);
            ASSERT_EQ(length, formatter.Format(line, record)) << format;
            ASSERT_STREQ(expected, line) << format;
        }
    }
}

TEST(JoinPath, PutsExactlyOneBackslashBetweenParts)
{
    wchar_t path[MAX_PATH] = L"C:\\Suite\\Bin\\";
    ASSERT_TRUE(JoinPath(path, L"config"));
    EXPECT_STREQ(L"C:\\Suite\\Bin\\config", path);
    ASSERT_TRUE(JoinPath(path, L"ShowMess.ini"));
    EXPECT_STREQ(L"C:\\Suite\\Bin\\config\\ShowMess.ini", path);
}

TEST(LoadText, ZeroFillsTheWholeBufferEvenForAMissingString)
{
    wchar_t buffer[16];
    std::wmemset(buffer, L'#', 16);
    // The test program carries no string table.
    EXPECT_EQ(0, winlayer::LoadText(101, buffer, 16));
    for (wchar_t c : buffer)
        EXPECT_EQ(L'\0', c);
}
