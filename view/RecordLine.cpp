#include "view/RecordLine.h"

#include <cwchar>

#include "lang/ResourceIds.h"
#include "ring/MessageRecord.h"
#include "winlayer/Resources.h"

namespace {

void LoadRecordLineFormat(wchar_t (&format)[kRecordLineFormatUnits])
{
    winlayer::LoadText(IDS_RECORD_LINE_FORMAT, format, kRecordLineFormatUnits);
}

int FormatWith(const wchar_t* format, wchar_t* buffer, const MessageRecord& record)
{
    // The text field need not end with a zero: hand the formatter a
    // terminated copy of at most its 128 units.
    wchar_t text[kMessageTextUnits + 1];
    std::wmemcpy(text, record.text, kMessageTextUnits);
    text[kMessageTextUnits] = L'\0';
    const SYSTEMTIME& t = record.time;
    return winlayer::FormatText(buffer, kRecordLineBuffer, format, t.wYear, t.wMonth, t.wDay,
                                t.wHour, t.wMinute, t.wSecond, t.wMilliseconds, text);
}

} // namespace

int FormatRecordLine(wchar_t* buffer, const MessageRecord* record)
{
    if (record == nullptr) {
        buffer[0] = L'\0';
        return 0;
    }
    wchar_t format[kRecordLineFormatUnits];
    LoadRecordLineFormat(format);
    return FormatWith(format, buffer, *record);
}

RecordLineFormatter::RecordLineFormatter()
{
    LoadRecordLineFormat(format_);
    TakeApart();
}

RecordLineFormatter::RecordLineFormatter(const wchar_t* format)
{
    ::lstrcpynW(format_, format, kRecordLineFormatUnits);
    TakeApart();
}

// Accepts only what Format writes exactly as _vsnwprintf would: text, %%,
// the numbers (0 to 65535, year first) in their order as %d or %i with an
// optional zero flag and a width below 100, and, after all seven, one plain
// %s.  Anything else leaves pieceCount_ at -1.
void RecordLineFormatter::TakeApart()
{
    int count = 0;
    int conversions = 0;
    const auto add = [&](Piece piece) {
        if (count == kMaxPieces)
            return false;
        pieces_[count++] = piece;
        return true;
    };
    for (int i = 0; format_[i] != L'\0';) {
        if (format_[i] != L'%') {
            int end = i;
            while (format_[end] != L'\0' && format_[end] != L'%')
                ++end;
            if (!add({Piece::Text, 0, false, 0, static_cast<unsigned short>(i),
                      static_cast<unsigned short>(end - i)}))
                return;
            i = end;
            continue;
        }
        if (format_[i + 1] == L'%') {
            if (!add({Piece::Text, 0, false, 0, static_cast<unsigned short>(i + 1), 1}))
                return;
            i += 2;
            continue;
        }
        ++i;
        const bool zeroPadded = format_[i] == L'0';
        if (zeroPadded)
            ++i;
        int width = 0;
        for (int digits = 0; format_[i] >= L'0' && format_[i] <= L'9'; ++i) {
            if (++digits > 2)
                return;
            width = width * 10 + (format_[i] - L'0');
        }
        if ((format_[i] == L'd' || format_[i] == L'i') && conversions < 7) {
            if (!add({Piece::Number, static_cast<unsigned char>(width), zeroPadded,
                      static_cast<unsigned char>(conversions), 0, 0}))
                return;
        } else if (format_[i] == L's' && conversions == 7 && !zeroPadded && width == 0) {
            if (!add({Piece::Message, 0, false, 0, 0, 0}))
                return;
        } else {
            return;
        }
        ++conversions;
        ++i;
    }
    pieceCount_ = count;
}

int RecordLineFormatter::Format(wchar_t* buffer, const MessageRecord& record) const
{
    if (pieceCount_ < 0)
        return FormatWith(format_, buffer, record);
    const SYSTEMTIME& t = record.time;
    const WORD numbers[7] = {t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond, t.wMilliseconds};
    // The line is what the whole format gives, cut at kRecordLineChars.
    int length = 0;
    const auto put = [&](wchar_t unit) {
        if (length < static_cast<int>(kRecordLineChars))
            buffer[length++] = unit;
    };
    for (int p = 0; p < pieceCount_; ++p) {
        const Piece& piece = pieces_[p];
        switch (piece.kind) {
        case Piece::Text:
            for (int i = 0; i < piece.length; ++i)
                put(format_[piece.start + i]);
            break;
        case Piece::Number: {
            wchar_t digits[5];
            int n = 0;
            for (unsigned value = numbers[piece.argument]; n == 0 || value != 0; value /= 10)
                digits[n++] = static_cast<wchar_t>(L'0' + value % 10);
            for (int pad = piece.width - n; pad > 0; --pad)
                put(piece.zeroPadded ? L'0' : L' ');
            while (n > 0)
                put(digits[--n]);
            break;
        }
        case Piece::Message:
            for (int i = 0; i < static_cast<int>(kMessageTextUnits) && record.text[i] != L'\0'; ++i)
                put(record.text[i]);
            break;
        }
    }
    buffer[length] = L'\0';
    return length;
}
