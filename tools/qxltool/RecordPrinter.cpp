#include "tools/qxltool/RecordPrinter.h"

#include <algorithm>

RecordPrinter::RecordPrinter(const RecordFormatter& formatter, const TextFilter& filter,
                             const TimeRange& range, bool countOnly, OutputStream& output)
    : formatter_(formatter), filter_(filter), range_(range), countOnly_(countOnly),
      output_(output), records_(kRecordsPerRead)
{
}

bool RecordPrinter::Print(LogFileReader& reader, const std::wstring& name, SlotSpan span)
{
    formatter_.SetFile(name);
    reached_ = span.first;
    for (long long slot = span.first; slot <= span.last && outputOpen_; reached_ = slot) {
        const int wanted = static_cast<int>(std::min<long long>(kRecordsPerRead, span.last - slot + 1));
        const int read = reader.Read(slot, records_.data(), wanted);
        if (read < 0)
            return false;
        if (read == 0)
            break;
        for (int i = 0; i < read; ++i, ++slot) {
            const MessageRecord& record = records_[static_cast<std::size_t>(i)];
            // The binary search has found the span; a record out of time
            // order inside it is still left out.
            if (range_.Limited() && !range_.Contains(record.time))
                continue;
            if (!filter_.Matches(record.text, RecordTextLength(record)))
                continue;
            ++matched_;
            if (!countOnly_)
                formatter_.Append(output_.Buffer(), slot, record);
        }
        outputOpen_ = output_.FlushIfFull();
    }
    return true;
}

std::wstring OpenFailureText(LogFileReader::Opened opened, DWORD error)
{
    switch (opened) {
    case LogFileReader::Opened::TooShort:
        return L"not a log file: shorter than its 32-byte header";
    case LogFileReader::Opened::Newer:
        return L"written by a newer version of the program; not read";
    default:
        return SystemErrorText(error);
    }
}
