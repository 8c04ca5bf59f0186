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
}

TEST(SavePathRules, UnusablePathsAreRefusedAndLeftAlone)
{
    for (const wchar_t* typed : {L"", L"   ", L"\\\\", L"C:\\a:b", L"C:\\a\\   \\b", L"C:\\a|b",
                                 L"C:\\a\\b?", L"C:\\\"q\""})
        EXPECT_EQ(L"refused", Normalized(typed)) << typed;
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

struct Case {
    const wchar_t* text;
    std::uint32_t value;
    bool accepted;
};

TEST(SettingNumbers, ParseAndAcceptance)
{
    const Case cases[] = {
        {L"", 0, true},
        {L"600", 600, true},
        {L"2147483647", 2147483647u, true},
        {L"2147483648", 2147483648u, false},    // over the range
        {L"3000000000", 3000000000u, false},    // ten characters starting above 2
        {L"0999999999", 999999999u, true},
        {L"a123456789", 0, true},               // ten characters: a non-digit first reads as 0
        {L"0x7FFFFFFF", 0x7FFFFFFFu, true},
        {L"0x80000000", 0x80000000u, false},
        {L"0xff", 255, true},
        {L"0X10", 0, true},                     // upper-case X: decimal 0
        {L" 0x10", 0, true},                    // the prefix counts at position 0 only
        {L"12abc", 12, true},
        {L" 42", 42, true},
        {L"\t+7", 7, true},
        {L"-1", 4294967295u, false},
        {L"-0", 0, true},
        {L"abc", 0, true},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.value, ParseSettingNumber(c.text)) << c.text;
        EXPECT_EQ(c.accepted, SettingTextAccepted(c.text, ParseSettingNumber(c.text))) << c.text;
    }
    // Eleven characters are refused whatever they scan to.
    EXPECT_FALSE(SettingTextAccepted(L"00000000001", 1));
}

} // namespace
