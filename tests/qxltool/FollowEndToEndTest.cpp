// follow as a real process: records appended to the newest file, a
// rollover into a new one, and Ctrl+C.
#include <gtest/gtest.h>

#include "ToolTestSupport.h"

using testing_support::TempDir;
using testing_support::WriteFileBytes;

TEST(ToolFollow, SeesAppendedRecordsAndGoesOnIntoTheNextFile)
{
    TempDir dir;
    const std::wstring first = dir / L"2611231405.qxl";
    const std::wstring second = dir / L"2611231406.qxl";
    WriteFileBytes(first, LogImage({{L"before the start", LocalAt(23, 14, 5, 0)}}));
    ToolProcess tool({L"follow", L"--iso", L"--poll", L"100", dir.Path()});
    ASSERT_TRUE(tool.WaitForErr("following " + std::string(first.begin(), first.end()) + " from slot 2"))
        << tool.Err();

    AppendRecord(first, {L"appended", LocalAt(23, 14, 5, 1)});
    ASSERT_TRUE(tool.WaitForOutLines(1)) << tool.Out();
    // A rollover: the window starts a new file, then writes what was still
    // pending into the old one.
    WriteFileBytes(second, LogImage({{L"new file", LocalAt(23, 14, 6, 0)}}));
    AppendRecord(first, {L"pending at the rollover", LocalAt(23, 14, 5, 59)});
    ASSERT_TRUE(tool.WaitForOutLines(3)) << tool.Out();
    AppendRecord(second, {L"after the rollover", LocalAt(23, 14, 6, 1)});
    ASSERT_TRUE(tool.WaitForOutLines(4)) << tool.Out();

    tool.PressCtrlC();
    EXPECT_EQ(0u, tool.Wait(5000));
    EXPECT_EQ("2026-11-23T14:05:01.000 appended\n"
              "2026-11-23T14:05:59.000 pending at the rollover\n"
              "2026-11-23T14:06:00.000 new file\n"
              "2026-11-23T14:06:01.000 after the rollover\n",
              tool.Out());
}

TEST(ToolFollow, ReadsAFileThatAppearsLaterFromItsStart)
{
    TempDir dir;
    ToolProcess tool({L"follow", L"--json", L"--poll", L"20", L"--grep", L"Pump", dir.Path()});
    ::Sleep(300);
    WriteFileBytes(dir / L"2611231405.qxl", LogImage({{L"Pump on", LocalAt(23, 14, 5, 0)},
                                                      {L"Valve shut", LocalAt(23, 14, 5, 1)},
                                                      {L"Pump off", LocalAt(23, 14, 5, 2)}}));
    ASSERT_TRUE(tool.WaitForOutLines(2)) << tool.Out();
    tool.PressCtrlC();
    EXPECT_EQ(0u, tool.Wait(5000));
    EXPECT_EQ("{\"time\":\"2026-11-23T14:05:00.000\",\"file\":\"2611231405.qxl\",\"slot\":1,\"text\":\"Pump on\"}\n"
              "{\"time\":\"2026-11-23T14:05:02.000\",\"file\":\"2611231405.qxl\",\"slot\":3,\"text\":\"Pump off\"}\n",
              tool.Out());
}

TEST(ToolFollow, TakesUpAReadThatFailedPartWayAtTheFirstRecordNotWritten)
{
    TempDir dir;
    const std::wstring path = dir / L"2611231405.qxl";
    WriteFileBytes(path, LogImage({{L"before the start", LocalAt(23, 14, 5, 0)}}));
    ToolProcess tool({L"follow", L"--iso", L"--poll", L"50", dir.Path()});
    ASSERT_TRUE(tool.WaitForErr("from slot 2")) << tool.Err();

    // 2100 records at once, read in batches of 1024: a locked record in the
    // second batch fails that read until it is unlocked.
    std::vector<LogLine> records;
    std::string expected;
    for (int i = 0; i < 2100; ++i) {
        records.push_back({L"record " + std::to_wstring(i), LocalAt(23, 14, 5, 1)});
        expected += "2026-11-23T14:05:01.000 record " + std::to_string(i) + "\n";
    }
    const std::vector<unsigned char> image = LogImage(records);
    HANDLE file = ::CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    OVERLAPPED locked = {};
    locked.Offset = 272 * 1500;
    ASSERT_TRUE(::LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 272, 0, &locked));
    DWORD written = 0;
    ::SetFilePointer(file, 0, nullptr, FILE_END);
    ::WriteFile(file, image.data() + 272, static_cast<DWORD>(image.size() - 272), &written, nullptr);
    ASSERT_TRUE(tool.WaitForOutLines(1024)) << tool.Err();
    ::Sleep(500);  // several looks, each failing at the locked record
    ::UnlockFileEx(file, 0, 272, 0, &locked);
    ::CloseHandle(file);
    ASSERT_TRUE(tool.WaitForOutLines(2100)) << tool.Err();

    tool.PressCtrlC();
    EXPECT_EQ(0u, tool.Wait(5000));
    EXPECT_EQ(expected, tool.Out());
}
