#include "tools/qxltool/LogCheck.h"

#include "log/LogFormat.h"
#include "print/LocalTimeOrder.h"
#include "tools/qxltool/LogSet.h"
#include "tools/qxltool/TextEncoding.h"
#include "tools/qxltool/TimeText.h"

#include <algorithm>

namespace {

bool IsZeroSlot(const MessageRecord& record)
{
    const auto* bytes = reinterpret_cast<const unsigned char*>(&record);
    return std::all_of(bytes, bytes + sizeof(record), [](unsigned char b) { return b == 0; });
}

bool IsValidTime(const SYSTEMTIME& time)
{
    FILETIME converted;
    return ::SystemTimeToFileTime(&time, &converted) != FALSE;
}

std::string Occurred(const char* what, const CheckFindings::Occurrences& found)
{
    return "  " + std::string(what) + ": " + std::to_string(found.count) + ", the first at slot " +
           std::to_string(found.firstSlot) + "\n";
}

} // namespace

bool CheckFindings::Damaged() const
{
    return header != Header::Accepted || tornBytes > 0 || records < 0 || zeroSlots.count > 0 ||
           badTimes.count > 0 || readFailed;
}

bool CheckFindings::Warned() const
{
    return !nameIsTime || backwards.count > 0 || backwardsFromPrevious;
}

void LogChecker::BeginFile(const std::wstring& name, long long size, CheckFindings::Header header)
{
    file_ = CheckFindings();
    file_.name = name;
    file_.nameIsTime = MakeLogFileEntry(name).named;
    file_.size = size;
    file_.header = header;
    firstOfFile_ = true;
    // Records are counted only where the header passes the check.  A file that
    // ends inside its header slot has -1 records, as the window counts them.
    if (header != CheckFindings::Header::Accepted)
        return;
    file_.records = size / kRecordBytes - 1;
    file_.tornBytes = size >= static_cast<long long>(kRecordBytes) ? size % kRecordBytes : 0;
}

void LogChecker::Record(long long slot, const MessageRecord& record)
{
    if (IsZeroSlot(record)) {
        file_.zeroSlots.Add(slot);
        return;
    }
    if (!IsValidTime(record.time)) {
        file_.badTimes.Add(slot);
        return;
    }
    if (hasPrevious_ && CompareLocalTimes(record.time, previous_) < 0) {
        if (firstOfFile_)
            file_.backwardsFromPrevious = true;
        else
            file_.backwards.Add(slot);
    }
    if (!file_.hasTimes)
        file_.firstTime = record.time;
    file_.hasTimes = true;
    file_.lastTime = record.time;
    previous_ = record.time;
    hasPrevious_ = true;
    firstOfFile_ = false;
}

void LogChecker::ReadFailed(long long slot, const std::wstring& error)
{
    file_.readFailed = true;
    file_.failedSlot = slot;
    file_.readError = error;
}

CheckFindings LogChecker::EndFile()
{
    return file_;
}

std::string DescribeFindings(const CheckFindings& f)
{
    std::string out = ToUtf8(f.name) + ": ";
    if (f.header == CheckFindings::Header::Accepted && f.records >= 0) {
        out += std::to_string(f.records) + (f.records == 1 ? " record" : " records");
        if (f.hasTimes)
            out += ", " + IsoTime(f.firstTime) + " .. " + IsoTime(f.lastTime);
        out += ", ";
    }
    out += f.Damaged() ? "damaged\n" : (f.Warned() ? "warnings\n" : "ok\n");

    if (f.header == CheckFindings::Header::TooShort)
        out += "  header: the file has " + std::to_string(f.size) +
               " bytes, fewer than the 32 of the version text\n";
    else if (f.header == CheckFindings::Header::Newer)
        out += "  header: the version text sorts after ours: a newer version wrote it, or it is "
               "not a log file\n";
    else if (f.records < 0)
        out += "  header slot incomplete: " + std::to_string(f.size) + " of 272 bytes\n";
    if (f.tornBytes > 0)
        out += "  torn tail: " + std::to_string(f.tornBytes) + " bytes after slot " +
               std::to_string(f.records) + ", the last whole record\n";
    if (f.zeroSlots.count > 0)
        out += Occurred("zero slots", f.zeroSlots);
    if (f.badTimes.count > 0)
        out += Occurred("bad time stamps", f.badTimes);
    if (f.readFailed)
        out += "  read failed at slot " + std::to_string(f.failedSlot) + ": " +
               ToUtf8(f.readError) + "\n";
    if (f.backwardsFromPrevious)
        out += "  time goes backwards: the first record is earlier than the previous file's last\n";
    if (f.backwards.count > 0)
        out += Occurred("time goes backwards", f.backwards);
    if (!f.nameIsTime)
        out += "  name: not a time YYMMDDHHmm, so the file cannot be placed among the others\n";
    return out;
}
