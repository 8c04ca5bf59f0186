#include "LogFixture.h"

#include <algorithm>

namespace {

using testing_support::FileExists;
using testing_support::ReadFileBytes;
using testing_support::WriteFileBytes;

ULONGLONG Ticks(const DecodedRecord& r)
{
    return Ticks(SYSTEMTIME{r.year, r.month, 0, r.day, r.hour, r.minute, r.second, r.milliseconds});
}

using FlushTest = WriterTest;

TEST_F(FlushTest, NothingPendingTouchesNoFile)
{
    Open();
    ASSERT_TRUE(::DeleteFileW(PathOf(kCurrentName).c_str()));
    EXPECT_EQ(writer.FlushPending(0), 1);
    EXPECT_EQ(writer.FlushPending(-3), 1);
    EXPECT_FALSE(FileExists(PathOf(kCurrentName)));
    EXPECT_TRUE(host.events.empty());
}

TEST_F(FlushTest, RecordsAcrossTheRingEndReadBackFieldByField)
{
    Open();
    SYSTEMTIME before;
    ::GetLocalTime(&before);
    AddLines(*ring, 0, 4990);
    ASSERT_EQ(writer.FlushPending(ring->PendingCount()), 1);
    AddLines(*ring, 4990, 23);
    SYSTEMTIME after;
    ::GetLocalTime(&after);
    ASSERT_EQ(ring->writePos, 13);
    ASSERT_EQ(writer.FlushPending(ring->PendingCount()), 1);
    EXPECT_EQ(ring->unwrittenPos, ring->writePos);
    EXPECT_TRUE(host.events.empty());
    EXPECT_EQ(writer.CurrentFile(), INVALID_HANDLE_VALUE);

    const DecodedLog log = ReadLog();
    EXPECT_EQ(ReadFileBytes(PathOf(kCurrentName)).size(), 272u * 5014);
    ASSERT_EQ(log.records.size(), 5013u);
    for (size_t i = 0; i < log.records.size(); ++i) {
        const DecodedRecord& record = log.records[i];
        ASSERT_EQ(record.text, LineText(static_cast<int>(i))) << i;
        ASSERT_LE(Ticks(before), Ticks(record)) << i;
        ASSERT_LE(Ticks(record), Ticks(after)) << i;
    }
}

// What start-up finds short of a whole slot is completed with zeros before
// the next record; nothing is changed.
TEST_F(FlushTest, StartFilesAreCompletedToWholeSlotsThenAppended)
{
    using Bytes = std::vector<unsigned char>;
    const Bytes header = LogImage({});
    const Bytes twoLines = LogImage(NumberedLines(2), L"7.000000", 100);
    struct Case {
        const char* what;
        Bytes image;
        Bytes completed;  // the file before the new record
    };
    Bytes tornHeader(header.begin(), header.begin() + 100);
    Bytes tornTail = twoLines;
    tornTail.resize(272 * 4, 0);
    const Case cases[] = {{"torn header", tornHeader, header}, {"torn tail", twoLines, tornTail}};
    for (const Case& c : cases) {
        WriteFileBytes(PathOf(kCurrentName), c.image);
        Open();
        ring->AddMessage(L"after");
        ASSERT_EQ(writer.FlushPending(ring->PendingCount()), 1) << c.what;
        Bytes bytes = ReadFileBytes(PathOf(kCurrentName));
        ASSERT_EQ(bytes.size(), c.completed.size() + 272) << c.what;
        EXPECT_EQ(DecodeLog(bytes).records.back().text, L"after") << c.what;
        bytes.resize(c.completed.size());
        Bytes expected = c.completed;
        std::copy(c.image.begin(), c.image.end(), expected.begin());
        EXPECT_EQ(bytes, expected) << c.what;
    }
    EXPECT_TRUE(host.events.empty());
}

// A newer program's file is refused with its box, which the size check shows
// before its own; a header too short to read is refused without a box.
TEST_F(FlushTest, NewerOrShortHeaderIsRefusedAndTheFileLeftAlone)
{
    Open();
    const std::vector<unsigned char> newer = MakeLogImage(L"8.000000", 1);
    WriteFileBytes(PathOf(kCurrentName), newer);
    AddLines(*ring, 0, 3);
    EXPECT_EQ(writer.FlushPending(ring->PendingCount()), 0);
    EXPECT_EQ(host.events, (Events{L"box 32804"}));
    EXPECT_EQ(writer.CurrentFile(), INVALID_HANDLE_VALUE);
    host.events.clear();
    EXPECT_EQ(writer.OnTimer(LogTimer::Size), -1);
    EXPECT_EQ(host.events, (Events{L"box 32804", L"box 32799", L"stop 1"}));
    EXPECT_EQ(ReadFileBytes(PathOf(kCurrentName)), newer);

    host.events.clear();
    WriteFileBytes(PathOf(kCurrentName), std::vector<unsigned char>(31, 0));
    EXPECT_EQ(writer.FlushPending(ring->PendingCount()), 0);
    EXPECT_EQ(writer.CurrentLogFileSize(), kLogSizeError);
    EXPECT_TRUE(host.events.empty());
    EXPECT_EQ(ring->unwrittenPos, 0);
    EXPECT_EQ(ReadFileBytes(PathOf(kCurrentName)).size(), 31u);
}

// After a flush in a later minute that could not write the current file:
// one switch to a new file, which holds only its header (no empty records
// for the stale count), and the old file untouched.
TEST_F(FlushTest, LockedFileIsReportedInTheSameMinuteAndSwitchedFromLater)
{
    Open();
    AddLines(*ring, 0, 3);
    {
        const auto lock = OpenExclusively(PathOf(kCurrentName));
        // The new file would have the same name: it cannot be opened either.
        EXPECT_EQ(writer.FlushPending(ring->PendingCount()), 0);
        EXPECT_EQ(host.events, (Events{SystemBoxEvent(ERROR_SHARING_VIOLATION)}));
        EXPECT_EQ(ring->PendingCount(), 3);

        host.events.clear();
        testNow = LocalTime(2026, 3, 3, 14, 6, 1);
        EXPECT_EQ(writer.FlushPending(3), 1);
    }
    // The old file could not take the pending lines: the flush inside the
    // switch fails with the box a further start would show, and they are gone.
    Events expected = NewFileEvents();
    expected.insert(expected.begin() + 3, SystemBoxEvent(ERROR_SHARING_VIOLATION));
    EXPECT_EQ(host.events, expected);
    EXPECT_EQ(std::wstring(writer.LogFilePath()), PathOf(L"2603031406.qxl"));
    EXPECT_EQ(ring->lineCount, 0);
    EXPECT_EQ(ReadFileBytes(PathOf(L"2603031406.qxl")).size(), 272u);
    EXPECT_EQ(ReadFileBytes(PathOf(kCurrentName)).size(), 272u);
}

TEST_F(FlushTest, TimedFlushEverySaveTimeSecondsAndEarlyPastFourThousand)
{
    writer.SetSettings(10, 3, 10);
    Open();
    AddLines(*ring, 0, 5);
    EXPECT_EQ(writer.OnTimer(LogTimer::Flush), 0);
    EXPECT_EQ(writer.OnTimer(LogTimer::Flush), 0);
    EXPECT_EQ(ring->PendingCount(), 5);
    EXPECT_EQ(writer.OnTimer(LogTimer::Flush), 0);
    EXPECT_EQ(ring->PendingCount(), 0);

    // A nearly full ring, more than 4000 records, is written at once,
    // whatever the count of seconds.
    AddLines(*ring, 5, 4000);
    EXPECT_EQ(writer.OnTimer(LogTimer::Flush), 0);
    EXPECT_EQ(ring->PendingCount(), 4000);
    ring->AddMessage(L"one more");
    EXPECT_EQ(writer.OnTimer(LogTimer::Flush), 0);
    EXPECT_EQ(ring->PendingCount(), 0);
    EXPECT_EQ(writer.FlushTicks(), 0u);

    // Savetime 0 writes nothing else, and its count of ticks keeps growing.
    writer.SetSettings(10, 0, 10);
    AddLines(*ring, 0, 4000);
    for (int tick = 0; tick < 5; ++tick)
        EXPECT_EQ(writer.OnTimer(LogTimer::Flush), 0);
    EXPECT_EQ(ring->PendingCount(), 4000);
    ring->AddMessage(L"one more");
    EXPECT_EQ(writer.OnTimer(LogTimer::Flush), 0);
    EXPECT_EQ(ring->PendingCount(), 0);
    EXPECT_EQ(writer.FlushTicks(), 6u);
    EXPECT_EQ(ReadLog().records.size(), 8007u);
    EXPECT_TRUE(host.events.empty());
}

// The same through a real full disk is LogDiskFullTest's, which needs a tmpfs.
TEST_F(FlushTest, DiskFullErrorStopsTimersAndAnnouncesBeforeTheBox)
{
    ::SetLastError(ERROR_DISK_FULL);
    writer.ReportFileError(true);
    EXPECT_EQ(host.events, (Events{L"stop 0", L"stop 1", L"announce 1", SystemBoxEvent(ERROR_DISK_FULL)}));
    EXPECT_EQ(writer.DiskFullState(), 1);
}

} // namespace
