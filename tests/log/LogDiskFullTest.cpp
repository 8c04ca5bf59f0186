#include "LogFixture.h"

namespace {

using testing_support::ReadFileBytes;

using DiskFullTest = WriterTest;

TEST_F(DiskFullTest, FullDiskStopsTimersAnnouncesAndReports)
{
    // A real small disk: with-tmpfs.sh mounts one and names it here.
    const std::wstring directory = testing_support::PathFromEnvironment("ORIEL_SMALL_DISK");
    if (directory.empty())
        GTEST_SKIP() << "no small disk: run through with-tmpfs.sh as a user allowed to mount tmpfs";

    writer.SetSettings(10, 1, 10);
    ASSERT_EQ(writer.OpenCurrentLogFile(directory.c_str(), kCurrentName), 0);
    host.events.clear();
    AddLines(*ring, 0, 1000);  // 272 KB: far more than the disk holds

    // The record that meets the end of the disk is written only in part.
    EXPECT_EQ(writer.OnTimer(LogTimer::Flush), -1);
    EXPECT_EQ(host.events, (Events{L"box 108", L"stop 0", L"box 32800"}));
    EXPECT_EQ(writer.DiskFullState(), 0);
    const int written = ring->unwrittenPos;
    ASSERT_GT(written, 0);
    ASSERT_LT(written, 1000);
    const std::wstring path = directory + L"\\" + kCurrentName;
    const size_t size = ReadFileBytes(path).size();
    EXPECT_GT(size, 272u * (1 + written));
    EXPECT_LT(size, 272u * (2 + written));

    // The next flush finds the disk full at its first write, the padding.
    host.events.clear();
    EXPECT_EQ(writer.FlushPending(ring->PendingCount()), 0);
    EXPECT_EQ(host.events,
              (Events{L"stop 0", L"stop 1", L"announce 1", SystemBoxEvent(ERROR_DISK_FULL)}));
    EXPECT_EQ(writer.DiskFullState(), 1);
    EXPECT_EQ(ring->unwrittenPos, written);
    EXPECT_EQ(ReadFileBytes(path).size(), size);
}

} // namespace
