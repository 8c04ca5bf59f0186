#include "tools/qxltool/Commands.h"

#include "tools/qxltool/CommandInputs.h"
#include "tools/qxltool/ExitCodes.h"
#include "tools/qxltool/LogSet.h"
#include "tools/qxltool/RangeFiles.h"
#include "tools/qxltool/RecordPrinter.h"

namespace {

// The time of a file's first record, for the choice of files to read.
bool FirstRecordTime(const LogFileEntry& file, SYSTEMTIME& time)
{
    LogFileReader reader;
    return reader.Open(file.path.c_str()) == LogFileReader::Opened::Accepted &&
           reader.Size() >= 2 * static_cast<long long>(kRecordBytes) && reader.TimeAt(1, time);
}

// Every file of the set that the range needs, refused or unreadable ones
// reported and skipped; the exit code of the first trouble, or 0.
int DumpFiles(const std::vector<LogFileEntry>& files, const TimeRange& range,
              RecordPrinter& printer)
{
    int result = kExitOk;
    const auto fail = [&](const LogFileEntry& file, const std::wstring& why, int code) {
        ReportError(file.path + L": " + why);
        if (result == kExitOk)
            result = code;
    };
    std::pair<std::size_t, std::size_t> chosen(0, files.size());
    if (range.Limited()) {
        const auto firstTime = [&](std::size_t i, SYSTEMTIME& time) { return FirstRecordTime(files[i], time); };
        chosen = SelectRangeFiles(files.size(), firstTime, range);
    }
    for (std::size_t i = chosen.first; i < chosen.second; ++i) {
        const LogFileEntry& file = files[i];
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
    if (const int exitCode = CollectLogSetArguments(options, files))
        return exitCode;
    TextFilter filter;
    if (const int exitCode = SetUpTextFilter(options, filter))
        return exitCode;

    OutputStream output(STD_OUTPUT_HANDLE);
    const RecordFormatter formatter(options.format, lineFormat, options.csvUnits);
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
