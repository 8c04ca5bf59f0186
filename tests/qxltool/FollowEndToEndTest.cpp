// follow as a real process: records appended to the newest file, a
// rollover into a new one, and Ctrl+C.
#include <gtest/gtest.h>

#include "TestLogs.h"
#include "ToolProcess.h"

using testing_support::TempDir;
using testing_support::WriteFileBytes;

namespace {

std::string JsonLine(const char* time, const char* file, int slot, const char* text)
{
    return std::string("{\"time\":\"") + time + "\",\"file\":\"" + file + "\",\"slot\":" +
           std::to_string(slot) + ",\"text\":\"" + text + "\"}\n";
}

} // namespace

TEST(ToolFollow, SeesAppendedRecordsAndGoesOnIntoTheNextFile)
{
    TempDir dir;
    const std::wstring current = dir / L"2611231405.qxl";
    WriteFileBytes(current, LogImage({{LocalAt(23, 14, 5, 0), L"before the start"}}));
    ToolProcess tool({L"follow", L"--json", L"--poll", L"20", dir.Path()});
    ASSERT_TRUE(tool.WaitForErr("following " + std::string(current.begin(), current.end()) + " from slot 2", 10000))
        << tool.Err();

    AppendFileBytes(current, RecordBytes({LocalAt(23, 14, 5, 1), L"appended"}));
    AppendFileBytes(current, RecordBytes({LocalAt(23, 14, 5, 2), L"appended too"}));
    ASSERT_TRUE(tool.WaitForOutLines(2, 5000)) << tool.Out();

    // A rollover: the window starts a new file, then writes what was still
    // pending into the old one.
    WriteFileBytes(dir / L"2611231406.qxl", LogImage({{LocalAt(23, 14, 6, 0), L"new file"}}));
    AppendFileBytes(current, RecordBytes({LocalAt(23, 14, 5, 59), L"pending at the rollover"}));
    ASSERT_TRUE(tool.WaitForOutLines(4, 5000)) << tool.Out();
    AppendFileBytes(dir / L"2611231406.qxl", RecordBytes({LocalAt(23, 14, 6, 1), L"after the rollover"}));
    ASSERT_TRUE(tool.WaitForOutLines(5, 5000)) << tool.Out();

    tool.PressCtrlC();
    EXPECT_EQ(0u, tool.Wait(5000));
    EXPECT_EQ(JsonLine("2026-11-23T14:05:01.000", "2611231405.qxl", 2, "appended") +
                  JsonLine("2026-11-23T14:05:02.000", "2611231405.qxl", 3, "appended too") +
                  JsonLine("2026-11-23T14:05:59.000", "2611231405.qxl", 4, "pending at the rollover") +
                  JsonLine("2026-11-23T14:06:00.000", "2611231406.qxl", 1, "new file") +
                  JsonLine("2026-11-23T14:06:01.000", "2611231406.qxl", 2, "after the rollover"),
              tool.Out());
}

TEST(ToolFollow, ReadsAFileThatAppearsLaterFromItsStart)
{
    TempDir dir;
    ToolProcess tool({L"follow", L"--iso", L"--poll", L"20", L"--grep", L"Pump", dir.Path()});
    ::Sleep(300);
    WriteFileBytes(dir / L"2611231405.qxl", LogImage({{LocalAt(23, 14, 5, 0), L"Pump on"},
                                                      {LocalAt(23, 14, 5, 1), L"Valve shut"},
                                                      {LocalAt(23, 14, 5, 2), L"Pump off"}}));
    ASSERT_TRUE(tool.WaitForOutLines(2, 5000)) << tool.Out();
    tool.PressCtrlC();
    EXPECT_EQ(0u, tool.Wait(5000));
    EXPECT_EQ("2026-11-23T14:05:00.000 Pump on\n2026-11-23T14:05:02.000 Pump off\n", tool.Out());
}
