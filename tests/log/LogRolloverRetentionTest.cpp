// The writer's two sweeps: the size check's rollover and the retention of old files.
#include "LogFixture.h"

#include "log/LogRetention.h"

namespace {

using testing_support::FileExists;
using testing_support::ReadFileBytes;
using testing_support::WriteFileBytes;

using RolloverTest = WriterTest;

TEST_F(RolloverTest, OversizedFileContinuesWithinItsMinuteAndRollsOverToALaterOne)
{
    writer.SetSettings(10, 600, 0);
    Open();
    AddLines(*ring, 0, 5);
    ASSERT_EQ(writer.FlushPending(ring->PendingCount()), 1);
    ASSERT_EQ(ring->lineCount, 5);
    testNow = LocalTime(2026, 3, 3, 14, 5, 59);
    EXPECT_EQ(writer.OnTimer(LogTimer::Size), 0);
    EXPECT_EQ(host.events, NewFileEvents());
    EXPECT_EQ(std::wstring(writer.LogFilePath()), PathOf(kCurrentName));
    EXPECT_EQ(ring->lineCount, 0);
    EXPECT_EQ(ReadLog().records.size(), 5u);
    // Still over the limit: the next check starts the same file again.
    host.events.clear();
    EXPECT_EQ(writer.OnTimer(LogTimer::Size), 0);
    EXPECT_EQ(host.events, NewFileEvents());

    // In a later minute the pending lines go into the old file before the switch.
    host.events.clear();
    AddLines(*ring, 5, 2);
    testNow = LocalTime(2026, 3, 3, 14, 6, 59);
    EXPECT_EQ(writer.OnTimer(LogTimer::Size), 0);
    EXPECT_EQ(host.events, NewFileEvents());
    EXPECT_EQ(std::wstring(writer.LogFilePath()), PathOf(L"2603031406.qxl"));
    const DecodedLog old = ReadLog();
    ASSERT_EQ(old.records.size(), 7u);
    EXPECT_EQ(old.records[6].text, LineText(6));
    EXPECT_EQ(ReadFileBytes(PathOf(L"2603031406.qxl")).size(), 272u);
    EXPECT_EQ(ring->lineCount, 0);

    // The new file is the current one: the next lines go there.
    AddLines(*ring, 7, 2);
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
    AddLines(*ring, 0, 2);
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

using RetentionTest = WriterTest;

// Exactly ten days after 14:05 on 3 March 2026.
const SYSTEMTIME kNow = LocalTime(2026, 3, 13, 14, 5, 0);

TEST_F(RetentionTest, DeletesOnlyLogFilesOlderThanTheLimit)
{
    // Kept: at the limit, recent, in the future, not a log file, no (valid)
    // time in the name, and the current file (named in another case).
    const std::vector<std::wstring> kept = {L"2603031405.qxl", L"2603131000.qxl", L"2701010000.qxl",
                                            L"2501010000.txt", L"garbage.qxl",    L"2600001405.qxl",
                                            L"2501020000.qxl"};
    // Older, whatever the case of the extension; the last is from 1999.
    const std::vector<std::wstring> deleted = {L"2603031404.qxl", L"2602011200.QXL", L"9901010000.qxl"};
    for (const auto* names : {&kept, &deleted})
        for (const auto& name : *names)
            WriteFileBytes(PathOf(name.c_str()), {});
    ASSERT_TRUE(::CreateDirectoryW(PathOf(L"2501010000.qxl").c_str(), nullptr));
    std::wstring current = PathOf(L"2501020000.QXL");
    ::CharUpperW(&current[0]);

    EXPECT_EQ(DeleteOldLogFiles(dir.Path().c_str(), current.c_str(), 10, kNow), 1);
    for (const auto& name : kept)
        EXPECT_TRUE(FileExists(PathOf(name.c_str()))) << name.c_str();
    for (const auto& name : deleted)
        EXPECT_FALSE(FileExists(PathOf(name.c_str()))) << name.c_str();
    EXPECT_TRUE(FileExists(PathOf(L"2501010000.qxl")));
    // A missing directory is passed over.
    EXPECT_EQ(DeleteOldLogFiles(PathOf(L"missing").c_str(), L"", 1, kNow), 1);
}

TEST_F(RetentionTest, TimerSweepsOnlyWhenDaysAreSet)
{
    Open(L"2603131400.qxl");
    WriteFileBytes(PathOf(L"2603121300.qxl"), {});
    testNow = kNow;
    writer.SetSettings(0, 600, 10);
    EXPECT_EQ(writer.OnTimer(LogTimer::Retention), 0);
    EXPECT_TRUE(FileExists(PathOf(L"2603121300.qxl")));

    writer.SetSettings(1, 600, 10);
    EXPECT_EQ(writer.OnTimer(LogTimer::Retention), 0);
    EXPECT_FALSE(FileExists(PathOf(L"2603121300.qxl")));
    EXPECT_TRUE(FileExists(PathOf(L"2603131400.qxl")));
    EXPECT_TRUE(host.events.empty());
}

} // namespace
