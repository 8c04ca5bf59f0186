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
}

RecordLineFormatter::RecordLineFormatter(const wchar_t* format)
{
    ::lstrcpynW(format_, format, kRecordLineFormatUnits);
}

int RecordLineFormatter::Format(wchar_t* buffer, const MessageRecord& record) const
{
    return FormatWith(format_, buffer, record);
}
