#include "tools/qxltool/TextEncoding.h"

namespace {

bool IsHighSurrogate(unsigned unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(unsigned unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

constexpr unsigned kReplacement = 0xFFFD;

// The code point starting at units[i], `i` moved past its units; an
// unpaired surrogate reads as U+FFFD.
unsigned NextCodePoint(const wchar_t* units, std::size_t count, std::size_t& i)
{
    const unsigned unit = static_cast<unsigned short>(units[i++]);
    if (IsHighSurrogate(unit) && i < count) {
        const unsigned low = static_cast<unsigned short>(units[i]);
        if (IsLowSurrogate(low)) {
            ++i;
            return 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
        }
    }
    return IsHighSurrogate(unit) || IsLowSurrogate(unit) ? kReplacement : unit;
}

void AppendCodePoint(std::string& out, unsigned point)
{
    if (point < 0x80) {
        out += static_cast<char>(point);
    } else if (point < 0x800) {
        out += static_cast<char>(0xC0 | (point >> 6));
        out += static_cast<char>(0x80 | (point & 0x3F));
    } else if (point < 0x10000) {
        out += static_cast<char>(0xE0 | (point >> 12));
        out += static_cast<char>(0x80 | ((point >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (point & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (point >> 18));
        out += static_cast<char>(0x80 | ((point >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((point >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (point & 0x3F));
    }
}

void AppendHex(std::string& out, unsigned value, int digits)
{
    static const char kHex[] = "0123456789abcdef";
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        out += kHex[(value >> shift) & 0xF];
}

bool NeedsCsvQuotes(const wchar_t* units, std::size_t count)
{
    if (count > 0 && (units[0] == L' ' || units[count - 1] == L' '))
        return true;
    for (std::size_t i = 0; i < count; ++i) {
        const wchar_t c = units[i];
        if (c == L',' || c == L'"' || c == L'\r' || c == L'\n')
            return true;
    }
    return false;
}

} // namespace

void AppendUtf8(std::string& out, const wchar_t* units, std::size_t count)
{
    for (std::size_t i = 0; i < count;)
        AppendCodePoint(out, NextCodePoint(units, count, i));
}

void AppendLineText(std::string& out, const wchar_t* units, std::size_t count)
{
    for (std::size_t i = 0; i < count;) {
        const unsigned point = NextCodePoint(units, count, i);
        if (point < 0x20)
            AppendCodePoint(out, 0x2400 + point);
        else if (point == 0x7F)
            AppendCodePoint(out, 0x2421);
        else
            AppendCodePoint(out, point);
    }
}

bool HasLoneSurrogate(const wchar_t* units, std::size_t count)
{
    for (std::size_t i = 0; i < count;) {
        const unsigned unit = static_cast<unsigned short>(units[i]);
        if (NextCodePoint(units, count, i) == kReplacement && unit != kReplacement)
            return true;
    }
    return false;
}

void AppendUtf16LeHex(std::string& out, const wchar_t* units, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned unit = static_cast<unsigned short>(units[i]);
        AppendHex(out, unit & 0xFF, 2);
        AppendHex(out, unit >> 8, 2);
    }
}

std::string ToUtf8(const std::wstring& text)
{
    std::string out;
    AppendUtf8(out, text.data(), text.size());
    return out;
}

void AppendJsonString(std::string& out, const wchar_t* units, std::size_t count)
{
    out += '"';
    for (std::size_t i = 0; i < count;) {
        const unsigned point = NextCodePoint(units, count, i);
        switch (point) {
        case '"': out += "\\\""; break;
        case '\\': out += "\\\\"; break;
        case '\b': out += "\\b"; break;
        case '\f': out += "\\f"; break;
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '\t': out += "\\t"; break;
        default:
            if (point < 0x20) {
                out += "\\u";
                AppendHex(out, point, 4);
            } else
                AppendCodePoint(out, point);
        }
    }
    out += '"';
}

void AppendCsvField(std::string& out, const wchar_t* units, std::size_t count)
{
    if (!NeedsCsvQuotes(units, count)) {
        AppendUtf8(out, units, count);
        return;
    }
    out += '"';
    for (std::size_t i = 0; i < count;) {
        const unsigned point = NextCodePoint(units, count, i);
        if (point == '"')
            out += '"';
        AppendCodePoint(out, point);
    }
    out += '"';
}
