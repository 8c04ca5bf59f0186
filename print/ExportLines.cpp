#include "print/ExportLines.h"

#include <cwchar>

int MakeExportLine(MessageRecord& record, const RecordLineFormatter& formatter,
                   wchar_t (&line)[kExportLineUnits])
{
    record.text[kMessageTextUnits - 1] = L'\0';
    int length = formatter.Format(line, record);
    line[length++] = L'\r';
    line[length++] = L'\n';
    line[length] = L'\0';
    return length;
}

void AppendTextExtension(wchar_t (&name)[260])
{
    const std::size_t used = std::wcslen(name);
    std::wcsncat(name, L".txt", 260 - 1 - used);
}
