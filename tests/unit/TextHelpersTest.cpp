#include <gtest/gtest.h>

#include <cwchar>

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

TEST(JoinPath, PutsExactlyOneBackslashBetweenParts)
{
    wchar_t path[MAX_PATH] = L"C:\\Suite\\Bin\\";
    ASSERT_TRUE(JoinPath(path, L"config"));
    EXPECT_STREQ(L"C:\\Suite\\Bin\\config", path);
    ASSERT_TRUE(JoinPath(path, L"ShowMess.ini"));
    EXPECT_STREQ(L"C:\\Suite\\Bin\\config\\ShowMess.ini", path);

    wchar_t noSlash[MAX_PATH] = L"D:\\logs";
    ASSERT_TRUE(JoinPath(noSlash, L"2603031405.qxl"));
    EXPECT_STREQ(L"D:\\logs\\2603031405.qxl", noSlash);
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
