#include "tools/qxltool/RecordFormats.h"

#include "tools/qxltool/TextEncoding.h"
#include "tools/qxltool/TimeText.h"

std::size_t RecordTextLength(const MessageRecord& record)
{
    std::size_t length = 0;
    while (length < static_cast<std::size_t>(kMessageTextUnits) && record.text[length] != L'\0')
        ++length;
    return length;
}

RecordFormatter::RecordFormatter(OutputFormat format, const wchar_t* lineFormat, bool csvUnits)
    : format_(format), csvUnits_(csvUnits), lineFormatter_(lineFormat)
{
}

void RecordFormatter::AppendHeading(std::string& out) const
{
    if (format_ == OutputFormat::Csv)
        out += csvUnits_ ? "time,file,slot,text,text_utf16le\n" : "time,file,slot,text\n";
}

void RecordFormatter::SetFile(const std::wstring& name)
{
    fileField_.clear();
    if (format_ == OutputFormat::Csv)
        AppendCsvField(fileField_, name.data(), name.size());
    else if (format_ == OutputFormat::Json)
        AppendJsonString(fileField_, name.data(), name.size());
}

void RecordFormatter::Append(std::string& out, long long slot, const MessageRecord& record) const
{
    const std::size_t length = RecordTextLength(record);
    switch (format_) {
    case OutputFormat::Line: {
        wchar_t line[kRecordLineBuffer];
        const int units = lineFormatter_.Format(line, record);
        AppendLineText(out, line, static_cast<std::size_t>(units));
        break;
    }
    case OutputFormat::Iso:
        AppendIsoTime(out, record.time);
        out += ' ';
        AppendLineText(out, record.text, length);
        break;
    case OutputFormat::Csv:
        AppendIsoTime(out, record.time);
        out += ',';
        out += fileField_;
        out += ',';
        out += std::to_string(slot);
        out += ',';
        AppendCsvField(out, record.text, length);
        if (csvUnits_) {
            out += ',';
            if (HasLoneSurrogate(record.text, length))
                AppendUtf16LeHex(out, record.text, length);
        }
        break;
    case OutputFormat::Json:
        out += "{\"time\":\"";
        AppendIsoTime(out, record.time);
        out += "\",\"file\":";
        out += fileField_;
        out += ",\"slot\":";
        out += std::to_string(slot);
        out += ",\"text\":";
        AppendJsonString(out, record.text, length);
        if (HasLoneSurrogate(record.text, length)) {
            out += ",\"text_utf16le\":\"";
            AppendUtf16LeHex(out, record.text, length);
            out += '"';
        }
        out += '}';
        break;
    }
    out += '\n';
}
