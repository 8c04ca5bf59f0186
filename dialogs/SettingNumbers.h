#pragma once
#include <cstdint>

// The numbers of the save-parameters dialog: how a field's text is read and
// which texts are accepted.

// Largest value a field accepts.
constexpr std::uint32_t kMaxSettingValue = 0x7FFFFFFF;

// The value of a field's text: hexadecimal after a leading "0x" (lower-case
// x only), otherwise a signed decimal number after any leading white space.
// Reading stops at the first character that does not fit; no digits read as
// 0.  The result is taken modulo 2^32, so "-1" gives 4294967295.
std::uint32_t ParseSettingNumber(const wchar_t* text);

// Whether a field whose text is `text` and whose parsed value is `value` is
// accepted: at most 10 characters; with exactly 10, a first character that
// is a digit of at most 2 (any other character counts as 0); and a value of
// at most kMaxSettingValue.
bool SettingTextAccepted(const wchar_t* text, std::uint32_t value);
