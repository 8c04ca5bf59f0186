#include "tools/qxltool/Commands.h"

#include "tools/qxltool/CommandInputs.h"
#include "tools/qxltool/ExitCodes.h"
#include "tools/qxltool/LogCheck.h"
#include "tools/qxltool/LogFileReader.h"
#include "tools/qxltool/LogSet.h"
#include "tools/qxltool/OutputStream.h"

#include <vector>

namespace {

constexpr int kRecordsPerRead = 1024;

CheckFindings::Header HeaderState(LogFileReader::Opened opened)
{
    switch (opened) {
    case LogFileReader::Opened::TooShort:
        return CheckFindings::Header::TooShort;
    case LogFileReader::Opened::Newer:
        return CheckFindings::Header::Newer;
    default:
        return CheckFindings::Header::Accepted;
    }
}

// Feeds every whole record of an accepted file to the checker.
void CheckRecords(LogFileReader& reader, long long records, LogChecker& checker)
{
    std::vector<MessageRecord> buffer(kRecordsPerRead);
    for (long long slot = 1; slot <= records;) {
        const int read = reader.Read(slot, buffer.data(), kRecordsPerRead);
        if (read < 0) {
            checker.ReadFailed(slot, SystemErrorText(reader.Error()));
            return;
        }
        if (read == 0)
            return;
        for (int i = 0; i < read && slot <= records; ++i, ++slot)
            checker.Record(slot, buffer[static_cast<std::size_t>(i)]);
    }
}

} // namespace

int RunCheck(const QxlOptions& options)
{
    std::vector<LogFileEntry> files;
    if (const int exitCode = CollectLogSetArguments(options, files))
        return exitCode;

    OutputStream output(STD_OUTPUT_HANDLE);
    LogChecker checker;
    long long records = 0;
    int damaged = 0, warned = 0, unreadable = 0;
    for (const LogFileEntry& file : files) {
        LogFileReader reader;
        const LogFileReader::Opened opened = reader.Open(file.path.c_str());
        const long long size = opened == LogFileReader::Opened::Failed ? -1 : reader.Size();
        if (size < 0) {
            ReportError(file.path + L": " + SystemErrorText(reader.Error()));
            ++unreadable;
            continue;
        }
        checker.BeginFile(file.name, size, HeaderState(opened));
        if (opened == LogFileReader::Opened::Accepted)
            CheckRecords(reader, size / kRecordBytes - 1, checker);
        const CheckFindings findings = checker.EndFile();
        output.Buffer() += DescribeFindings(findings);
        records += findings.records > 0 ? findings.records : 0;
        damaged += findings.Damaged() ? 1 : 0;
        warned += !findings.Damaged() && findings.Warned() ? 1 : 0;
        output.FlushIfFull();
    }
    output.Buffer() += std::to_string(files.size()) + (files.size() == 1 ? " file, " : " files, ") +
                       std::to_string(records) + " records: " + std::to_string(damaged) +
                       " damaged, " + std::to_string(warned) + " with warnings only" +
                       (unreadable > 0 ? ", " + std::to_string(unreadable) + " unreadable" : "") +
                       "\n";
    if (!output.Flush())
        return kExitOutputClosed;
    if (damaged > 0)
        return kExitDamaged;
    return unreadable > 0 ? kExitUnreadable : kExitOk;
}
