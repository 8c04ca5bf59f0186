#include <gtest/gtest.h>

#include "dialogs/SettingNumbers.h"

namespace {

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
