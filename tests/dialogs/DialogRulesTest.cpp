// The pure rules behind the settings dialogs.
#include <gtest/gtest.h>

#include <string>

#include "dialogs/PathRules.h"
#include "dialogs/SettingNumbers.h"
#include "support/TestFiles.h"

namespace {

// NormalizeSavePath's answer: the canonical path, or "refused" (the buffer
// must then be left as it was).
std::wstring Normalized(const std::wstring& typed)
{
    wchar_t path[MAX_PATH];
    ::lstrcpynW(path, typed.c_str(), MAX_PATH);
    if (NormalizeSavePath(path))
        return path;
    return typed == path ? L"refused" : L"refused, but changed to " + std::wstring(path);
}

TEST(SavePathRules, AbsolutePathsComeOutCanonical)
{
    EXPECT_EQ(L"C:\\my logs\\2026", Normalized(L"  C:\\ my logs \\2026\\ "));
    EXPECT_EQ(L"C:", Normalized(L"C:\\"));
    EXPECT_EQ(L"C:\\a\\c", Normalized(L"C:\\a\\.\\b\\..\\c"));
    EXPECT_EQ(L"D:\\x\\y", Normalized(L"D:/x/y"));
    EXPECT_EQ(L"\\\\server\\share\\logs", Normalized(L"\\\\server\\share\\logs"));
    EXPECT_EQ(L"refused", Normalized(L"\\\\"));  // a network path names no server
}

TEST(SavePathRules, RelativePathsAreMadeAbsoluteAgainstTheCurrentDirectory)
{
    testing_support::TempDir dir;
    wchar_t previous[MAX_PATH];
    ::GetCurrentDirectoryW(MAX_PATH, previous);
    ASSERT_TRUE(::SetCurrentDirectoryW((dir / L"").c_str()));
    EXPECT_EQ(dir / L"logs\\sub", Normalized(L"logs\\sub"));
    EXPECT_EQ(dir / L"up", Normalized(L".\\x\\..\\up"));
    ::SetCurrentDirectoryW(previous);
}

// Decimal reading and the acceptance rule are the fuzz driver's; it leaves
// hexadecimal values unchecked.
TEST(SettingNumbers, HexadecimalAfterALowerCaseX)
{
    EXPECT_EQ(255u, ParseSettingNumber(L"0xff"));
    EXPECT_TRUE(SettingTextAccepted(L"0x7FFFFFFF", ParseSettingNumber(L"0x7FFFFFFF")));
    EXPECT_FALSE(SettingTextAccepted(L"0x80000000", ParseSettingNumber(L"0x80000000")));
}

} // namespace
