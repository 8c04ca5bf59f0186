#include "dialogs/SettingNumbers.h"

#include <cwchar>
#include <cwctype>

namespace {

int HexDigitValue(wchar_t c)
{
    if (c >= L'0' && c <= L'9')
        return c - L'0';
    if (c >= L'a' && c <= L'f')
        return c - L'a' + 10;
    if (c >= L'A' && c <= L'F')
        return c - L'A' + 10;
    return -1;
}

bool IsDecimalDigit(wchar_t c)
{
    return c >= L'0' && c <= L'9';
}

// Arithmetic is unsigned 32-bit throughout, so overlong numbers wrap the
// way the classic scanners do instead of being undefined.
std::uint32_t ScanHex(const wchar_t* p)
{
    std::uint32_t value = 0;
    for (int digit; (digit = HexDigitValue(*p)) >= 0; ++p)
        value = value * 16u + static_cast<std::uint32_t>(digit);
    return value;
}

std::uint32_t ScanSignedDecimal(const wchar_t* p)
{
    while (std::iswspace(*p))
        ++p;
    const bool negative = *p == L'-';
    if (*p == L'-' || *p == L'+')
        ++p;
    std::uint32_t value = 0;
    for (; IsDecimalDigit(*p); ++p)
        value = value * 10u + static_cast<std::uint32_t>(*p - L'0');
    return negative ? 0u - value : value;
}

} // namespace

std::uint32_t ParseSettingNumber(const wchar_t* text)
{
    if (text[0] == L'0' && text[1] == L'x')
        return ScanHex(text + 2);
    return ScanSignedDecimal(text);
}

bool SettingTextAccepted(const wchar_t* text, std::uint32_t value)
{
    const std::size_t length = std::wcslen(text);
    if (length > 10)
        return false;
    if (length == 10 && IsDecimalDigit(text[0]) && text[0] > L'2')
        return false;
    return value <= kMaxSettingValue;
}
