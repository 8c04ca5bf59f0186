// What the user types into the settings and print setup dialogs: a save directory, a save parameter, six time
// fields, a header and a code from the code menu.  Input: in that order (texts end at a zero unit).
#include <algorithm>
#include <cerrno>
#include <cwctype>

#include "dialogs/PathRules.h"
#include "dialogs/SettingNumbers.h"
#include "print/FieldCodes.h"
#include "print/RangeFields.h"
#include "tools/fuzz/FuzzDriver.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // An accepted path is a drive and colon (or a backslash), then trimmed components of allowed characters,
    // each after one backslash; slashes and spaces at separators, or anything after an empty component, change
    // nothing.  A refused path is left as it was.
    FuzzInput in(data, size);
    const std::wstring typed = in.Text(MAX_PATH - 1);
    wchar_t path[MAX_PATH] = {}, again[MAX_PATH];
    typed.copy(path, MAX_PATH - 1);
    const std::wstring result = NormalizeSavePath(path) == 1 ? path : L"";
    FUZZ_CHECK(!result.empty() || typed == path);
    std::wstring loose = result.substr(0, 2);
    for (std::size_t at = result[0] == L'\\' ? 1 : 2, end; at < result.size(); at = end) {
        end = std::min(result.find(L'\\', at + 1), result.size());
        const std::wstring part = result.substr(at + 1, end - at - 1);
        FUZZ_CHECK(result[at] == L'\\' && !part.empty() && part.find_first_of(L":*?\"<>|/\\") == std::wstring::npos &&
                   !std::iswspace(part.front()) && !std::iswspace(part.back()));
        loose += (at < 2 ? L"" : L"/ ") + part + L" ";
    }
    FUZZ_CHECK(result.empty() || (CanonicalSavePath((loose + L"//*?").c_str(), again) && result == again &&
                                  (result[0] == L'\\' || (std::wcschr(L"abcdefghijklmnopqrstuvwxyz", result[0] | 32) &&
                                                           result[1] == L':'))));

    // A save parameter: at most 10 characters, 10 only when not starting with 3..9, a value below 2^31.  Reading
    // stops at the first character that does not fit, and a decimal wraps modulo 2^32.
    const std::wstring field = in.Text(14);
    const std::uint32_t value = ParseSettingNumber(field.c_str());
    errno = 0;
    const unsigned long long decimal = std::wcstoull(field.c_str(), nullptr, 10);
    const bool tenFromThree = field.size() == 10 && field[0] >= L'3' && field[0] <= L'9';
    FUZZ_CHECK(SettingTextAccepted(field.c_str(), value) == (field.size() <= 10 && !tenFromThree && value <= 0x7FFFFFFFu) &&
               ParseSettingNumber((field + L"z").c_str()) == value &&
               (field.compare(0, 2, L"0x") == 0 || errno != 0 || value == static_cast<std::uint32_t>(decimal)));

    // Time fields: the first refusal in field order, 126 for an empty year, hour, minute or second, else 120..125
    // for a value out of range, the day's carrying the month's days (leap years included).
    TimeFieldValues fields;
    const std::uint32_t empties = in.Number(64);
    for (int i = 0; i < kTimeFields; ++i)  // an empty control reads 0
        fields.value[i] = (fields.empty[i] = (empties >> i) & 1) ? 0 : static_cast<int>(in.Number(0xFFFFFFFF));
    const int* v = fields.value;
    const int month = std::clamp(v[FieldMonth], 1, 12), leap = v[0] % 4 == 0 && (v[0] % 100 != 0 || v[0] % 400 == 0);
    const int days = month == 2 ? 28 + leap : 30 + (month + month / 8) % 2;
    const int low[kTimeFields] = {0, 1, 1, 0, 0, 0}, high[kTimeFields] = {9999, 12, days, 23, 59, 59};
    FieldRefusal expected;
    for (int i = 0; i < kTimeFields && expected.textId == 0; ++i)
        if (const bool empty = fields.empty[i] && i != FieldMonth && i != FieldDay; empty || v[i] < low[i] || v[i] > high[i])
            expected = {empty ? 126u : 120u + i, i, i == FieldDay ? days : 0};
    const FieldRefusal refusal = CheckTimeFields(fields);
    FUZZ_CHECK(refusal.textId == expected.textId && refusal.field == expected.field && refusal.days == expected.days);
    // An accepted time from 1601 on is one the platform takes and gives back; it lies within a log of itself
    // alone, not within one that starts a millisecond later.
    SYSTEMTIME time = TimeFromFields(fields), later = time, back = {};
    FILETIME moment;
    later.wMilliseconds = 1;
    FUZZ_CHECK(refusal.textId != 0 || v[0] < 1601 ||
               (::SystemTimeToFileTime(&time, &moment) && ::FileTimeToSystemTime(&moment, &back) && back.wYear == v[0] &&
                back.wMonth == v[1] && back.wDay == v[2] && back.wHour == v[3] && back.wMinute == v[4] &&
                back.wSecond == v[5] && IsWithinLog(time, time, time) && !IsWithinLog(time, later, later)));

    // A code in place of a selection: the text before it, the code, at most 1024 - end - 2 * (code length) units
    // of the rest, all cut after 1023 units; nothing for a selection that is none, and nothing past the box.
    const int command = 32770 + static_cast<int>(in.Number(24));
    const wchar_t* code = FieldCodeForCommand(command);
    FUZZ_CHECK(command < 32778 || command > 32784 ? !code : code[0] == L'&' && code[1] == L"FPDTLCR"[command - 32778] && !code[2]);
    const std::wstring header = in.Text(kFieldTextUnits - 1), anyCode = code ? code : in.Text(3);
    const long long start = static_cast<int>(in.Number(0xFFFFFFFF)), end = static_cast<int>(in.Number(0xFFFFFFFF));
    const long long length = header.size(), rest = std::min(end, length), codeLength = anyCode.size();
    struct { wchar_t text[kFieldTextUnits], guard[8]; } out;
    std::fill_n(out.text, kFieldTextUnits, 0xBEEF);
    std::fill_n(out.guard, 8, 0xBEEF);
    const bool inserted = InsertFieldCode(header.c_str(), int(start), int(end), anyCode.c_str(), out.text);
    const long long kept = std::max(0LL, std::min(length - rest, kFieldTextUnits - end - 2 * codeLength));
    FUZZ_CHECK(inserted == (start >= 0 && start <= end) && std::count(out.guard, out.guard + 8, 0xBEEF) == 8 &&
               (!inserted ? std::count(out.text, out.text + kFieldTextUnits, 0xBEEF) == kFieldTextUnits
                          : !out.text[kFieldTextUnits - 1] &&
                                out.text == (header.substr(0, std::min(start, length)) + anyCode + header.substr(rest, kept))
                                                .substr(0, kFieldTextUnits - 1)));
    return 0;
}
