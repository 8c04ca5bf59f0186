#pragma once
#include <windows.h>

#include <string>

#include "ring/MessageRecord.h"

// What check finds in one file.  Damage is what the writer or a crash can
// leave behind and readers stumble over; warnings are what may be right
// (the clock set back, a converted text log) but upsets the order that
// ranges and the window's own file search rely on.
struct CheckFindings {
    enum class Header { Accepted, TooShort, Newer };

    struct Occurrences {
        long long count = 0;
        long long firstSlot = 0;
        void Add(long long slot)
        {
            if (count++ == 0)
                firstSlot = slot;
        }
    };

    std::wstring name;
    bool nameIsTime = false;
    long long size = 0;
    Header header = Header::Accepted;
    long long records = 0;      // whole records after the header slot
    long long tornBytes = 0;    // bytes after the last whole slot
    Occurrences zeroSlots;      // slots of nothing but zero bytes
    Occurrences badTimes;       // time stamps that are no valid time
    Occurrences backwards;      // records earlier than the record before
    bool backwardsFromPrevious = false;  // first record earlier than the previous file's last
    bool hasTimes = false;
    SYSTEMTIME firstTime = {};
    SYSTEMTIME lastTime = {};
    bool readFailed = false;
    long long failedSlot = 0;
    std::wstring readError;

    bool Damaged() const;
    bool Warned() const;
};

// Checks the files of a set one after the other, record by record, so
// that a file of any size is looked at in one pass of large reads.  Time
// order is followed across files as well.  Any bytes at all are taken.
class LogChecker {
public:
    // A file of `size` bytes whose header check gave `header`; records come
    // next only when it was accepted.
    void BeginFile(const std::wstring& name, long long size, CheckFindings::Header header);
    void Record(long long slot, const MessageRecord& record);
    void ReadFailed(long long slot, const std::wstring& error);
    CheckFindings EndFile();

private:
    CheckFindings file_;
    bool hasPrevious_ = false;  // a valid time seen in this or an earlier file
    SYSTEMTIME previous_ = {};
    bool firstOfFile_ = true;
};

// The report of one file: a line with its name, record count, time span and
// verdict ("ok", "warnings", "damaged"), then one indented line a finding.
std::string DescribeFindings(const CheckFindings& findings);
