#include "WriterFixture.h"

#include <vector>

namespace {

using testing_support::FileExists;
using testing_support::ReadFileBytes;
using Events = std::vector<std::wstring>;

using RolloverTest = WriterTest;

TEST_F(RolloverTest, OversizedFileContinuesWithinItsMinuteAndRollsOverToALaterOne)
{
    writer.SetSettings(10, 600, 0);
    Open();
    AddLines(0, 5);
    ASSERT_EQ(writer.FlushPending(ring->PendingCount()), 1);
    ASSERT_EQ(ring->lineCount, 5);
    testNow = LocalTime(2026, 3, 3, 14, 5, 59);
    EXPECT_EQ(writer.OnTimer(LogTimer::Size), 0);
    EXPECT_EQ(host.events, NewFileEvents());
    EXPECT_EQ(std::wstring(writer.LogFilePath()), PathOf(kCurrentName));
    EXPECT_EQ(ring->lineCount, 0);
    EXPECT_EQ(ring->fileOnlyLines, 0);
    EXPECT_EQ(ReadLog().records.size(), 5u);
    EXPECT_EQ(ReadLog().trailingBytes, 0u);
    // Still over the limit: the next check starts the same file again.
    host.events.clear();
    EXPECT_EQ(writer.OnTimer(LogTimer::Size), 0);
    EXPECT_EQ(host.events, NewFileEvents());

    // In a later minute the pending lines go into the old file before the switch.
    host.events.clear();
    AddLines(5, 2);
    testNow = LocalTime(2026, 3, 3, 14, 6, 59);
    EXPECT_EQ(writer.OnTimer(LogTimer::Size), 0);
    EXPECT_EQ(host.events, NewFileEvents());
    EXPECT_EQ(std::wstring(writer.LogFilePath()), PathOf(L"2603031406.qxl"));
    const DecodedLog old = ReadLog();
    ASSERT_EQ(old.records.size(), 7u);
    EXPECT_EQ(old.records[6].text, LineText(6));
    const std::vector<unsigned char> fresh = ReadFileBytes(PathOf(L"2603031406.qxl"));
    EXPECT_EQ(fresh.size(), 272u);
    EXPECT_EQ(DecodeLog(fresh).version, L"7.000000");
    EXPECT_EQ(ring->lineCount + ring->writePos + ring->unwrittenPos + ring->fileOnlyLines, 0);

    // The new file is the current one: the next lines go there.
    AddLines(7, 2);
    writer.SetSettings(10, 600, 10);
    EXPECT_EQ(writer.FlushPending(ring->PendingCount()), 1);
    EXPECT_EQ(ReadLog(L"2603031406.qxl").records.size(), 2u);
}

TEST_F(RolloverTest, FileWithinTheLimitIsLeftAloneAndTheLimitWrapsAt4096Megabytes)
{
    Open();
    EXPECT_EQ(writer.CurrentLogFileSize(), 272u);
    EXPECT_EQ(writer.OnTimer(LogTimer::Size), 0);
    EXPECT_TRUE(host.events.empty());
    EXPECT_EQ(writer.CurrentFile(), INVALID_HANDLE_VALUE);

    writer.SetSettings(10, 600, 4096);
    testNow = LocalTime(2026, 3, 3, 14, 7);
    EXPECT_EQ(writer.OnTimer(LogTimer::Size), 0);
    EXPECT_EQ(host.events, NewFileEvents());
    EXPECT_EQ(std::wstring(writer.LogFilePath()), PathOf(L"2603031407.qxl"));
}

TEST_F(RolloverTest, DeletedCurrentFileStopsSizeCheckThenTimedFlush)
{
    writer.SetSettings(10, 1, 10);
    Open();
    ASSERT_TRUE(::DeleteFileW(PathOf(kCurrentName).c_str()));
    EXPECT_EQ(writer.OnTimer(LogTimer::Size), -1);
    EXPECT_EQ(host.events, (Events{L"box 32799", L"stop 1"}));

    host.events.clear();
    AddLines(0, 2);
    EXPECT_EQ(writer.OnTimer(LogTimer::Flush), -1);
    EXPECT_EQ(host.events, (Events{L"stop 0", L"box 32800"}));
    // Recreated empty, without a header, and nothing written into it.
    ASSERT_TRUE(FileExists(PathOf(kCurrentName)));
    EXPECT_EQ(ReadFileBytes(PathOf(kCurrentName)).size(), 0u);
    EXPECT_EQ(ring->PendingCount(), 2);
}

TEST_F(RolloverTest, FailedRolloverStopsTheSizeCheck)
{
    writer.SetSettings(10, 600, 0);
    Open();
    writer.SetSaveDirectory(PathOf(L"gone").c_str());
    EXPECT_EQ(writer.OnTimer(LogTimer::Size), -1);
    EXPECT_EQ(host.events,
              (Events{SystemBoxEvent(ERROR_PATH_NOT_FOUND), L"box 32801", L"stop 1"}));
    EXPECT_EQ(std::wstring(writer.LogFilePath()), PathOf(kCurrentName));
    // Only start-up creates the directory.
    EXPECT_FALSE(FileExists(PathOf(L"gone")));
}

} // namespace
