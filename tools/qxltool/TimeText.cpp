#include "tools/qxltool/TimeText.h"


namespace {

bool IsLeapYear(int year)
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int DaysInMonth(int year, int month)
{
    static const int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeapYear(year) ? 29 : kDays[month - 1];
}

// The ASCII digits only: the runtime's iswdigit also takes the decimal
// digits of other scripts, which `- L'0'` would turn into wild numbers.
bool IsAsciiDigit(wchar_t c)
{
    return c >= L'0' && c <= L'9';
}

// Reads exactly `digits` decimal digits at `pos`.
bool ReadDigits(const std::wstring& text, std::size_t& pos, int digits, int& value)
{
    value = 0;
    for (int i = 0; i < digits; ++i, ++pos) {
        if (pos >= text.size() || !IsAsciiDigit(text[pos]))
            return false;
        value = value * 10 + (text[pos] - L'0');
    }
    return true;
}

bool Expect(const std::wstring& text, std::size_t& pos, wchar_t c)
{
    if (pos >= text.size() || text[pos] != c)
        return false;
    ++pos;
    return true;
}

void AppendDigits(std::string& out, unsigned value, int width)
{
    char digits[8];
    int n = 0;
    do {
        digits[n++] = static_cast<char>('0' + value % 10);
        value /= 10;
    } while (value != 0);
    for (int i = n; i < width; ++i)
        out += '0';
    while (n > 0)
        out += digits[--n];
}

} // namespace

bool ParseTimeArgument(const std::wstring& text, TimeEnd end, SYSTEMTIME& time,
                       std::wstring& error)
{
    error = L"'" + text + L"' is not a time of the form YYYY-MM-DD[ hh:mm[:ss[.fff]]]";
    std::size_t pos = 0;
    int year, month, day;
    if (!ReadDigits(text, pos, 4, year) || !Expect(text, pos, L'-') ||
        !ReadDigits(text, pos, 2, month) || !Expect(text, pos, L'-') ||
        !ReadDigits(text, pos, 2, day))
        return false;
    const bool endOfSpan = end == TimeEnd::End;
    int hour = endOfSpan ? 23 : 0, minute = endOfSpan ? 59 : 0, second = endOfSpan ? 59 : 0;
    int milliseconds = endOfSpan ? 999 : 0;
    if (pos < text.size()) {
        if (text[pos] != L' ' && text[pos] != L'T')
            return false;
        ++pos;
        if (!ReadDigits(text, pos, 2, hour) || !Expect(text, pos, L':') ||
            !ReadDigits(text, pos, 2, minute))
            return false;
        if (pos < text.size()) {
            if (!Expect(text, pos, L':') || !ReadDigits(text, pos, 2, second))
                return false;
            if (pos < text.size()) {
                if (!Expect(text, pos, L'.'))
                    return false;
                // One to three digits of a second; those left out are zeros
                // (or nines for the end of a span).
                int digits = 0;
                milliseconds = 0;
                for (; pos < text.size() && digits < 3 && IsAsciiDigit(text[pos]); ++pos, ++digits)
                    milliseconds = milliseconds * 10 + (text[pos] - L'0');
                if (digits == 0 || pos != text.size())
                    return false;
                for (; digits < 3; ++digits)
                    milliseconds = milliseconds * 10 + (endOfSpan ? 9 : 0);
            }
        }
    }
    if (year < 1601 || month < 1 || month > 12 || day < 1 || day > DaysInMonth(year, month) ||
        hour > 23 || minute > 59 || second > 59) {
        error = L"'" + text + L"': a field is out of range";
        return false;
    }
    time = SYSTEMTIME{static_cast<WORD>(year),   static_cast<WORD>(month),
                      0,                         static_cast<WORD>(day),
                      static_cast<WORD>(hour),   static_cast<WORD>(minute),
                      static_cast<WORD>(second), static_cast<WORD>(milliseconds)};
    error.clear();
    return true;
}

void AppendIsoTime(std::string& out, const SYSTEMTIME& time)
{
    AppendDigits(out, time.wYear, 4);
    out += '-';
    AppendDigits(out, time.wMonth, 2);
    out += '-';
    AppendDigits(out, time.wDay, 2);
    out += 'T';
    AppendDigits(out, time.wHour, 2);
    out += ':';
    AppendDigits(out, time.wMinute, 2);
    out += ':';
    AppendDigits(out, time.wSecond, 2);
    out += '.';
    AppendDigits(out, time.wMilliseconds, 3);
}

std::string IsoTime(const SYSTEMTIME& time)
{
    std::string out;
    AppendIsoTime(out, time);
    return out;
}
