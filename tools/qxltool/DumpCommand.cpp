#include "tools/qxltool/Commands.h"

#include "tools/qxltool/ExitCodes.h"
#include "tools/qxltool/LogSet.h"
#include "tools/qxltool/RecordPrinter.h"

namespace {

// Every file of the set, refused or unreadable ones reported and skipped;
// the exit code of the first trouble, or 0.
int DumpFiles(const std::vector<LogFileEntry>& files, const TimeRange& range,
              RecordPrinter& printer)
{
    int result = kExitOk;
    const auto fail = [&](const LogFileEntry& file, const std::wstring& why, int code) {
        ReportError(file.path + L": " + why);
        if (result == kExitOk)
            result = code;
    };
    for (const LogFileEntry& file : files) {
        LogFileReader reader;
        const LogFileReader::Opened opened = reader.Open(file.path.c_str());
        if (opened != LogFileReader::Opened::Accepted) {
            fail(file, OpenFailureText(opened, reader.Error()),
                 opened == LogFileReader::Opened::Failed ? kExitUnreadable : kExitRefused);
            continue;
        }
        const long long size = reader.Size();
        const int lastSlot = static_cast<int>(size / kRecordBytes) - 1;
        SlotSpan span;
        const auto timeAt = [&](int slot, SYSTEMTIME& time) { return reader.TimeAt(slot, time); };
        if (size < 0 || !SelectRangeSlots(timeAt, lastSlot, range, span) ||
            !printer.Print(reader, file.name, span)) {
            fail(file, SystemErrorText(reader.Error()), kExitUnreadable);
            continue;
        }
        if (!printer.OutputOpen())
            return kExitOutputClosed;
    }
    return result;
}

} // namespace

int RunDump(const QxlOptions& options, const wchar_t* lineFormat)
{
    std::vector<LogFileEntry> files;
    std::wstring missing;
    if (!CollectLogSet(options.paths, files, missing)) {
        ReportError(missing + L": no such file or directory");
        return kExitUnreadable;
    }
    files = OrderLogSet(std::move(files));
    if (files.empty()) {
        ReportError(L"no log files (*.qxl) found");
        return kExitUnreadable;
    }
    TextFilter filter;
    std::wstring error;
    if (!filter.Set(options.grep, options.regex, error)) {
        ReportError(error);
        return kExitUsage;
    }

    OutputStream output(STD_OUTPUT_HANDLE);
    const RecordFormatter formatter(options.format, lineFormat);
    if (!options.count)
        formatter.AppendHeading(output.Buffer());
    RecordPrinter printer(formatter, filter, options.range, options.count, output);
    const int result = DumpFiles(files, options.range, printer);
    if (result == kExitOutputClosed)
        return result;
    if (options.count)
        output.Buffer() += std::to_string(printer.Matched()) + "\n";
    return output.Flush() ? result : kExitOutputClosed;
}
