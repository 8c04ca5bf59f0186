#pragma once
// The log tests' clock, lines and writer fixture.
#include "log/LogHost.h"
#include "log/LogWriter.h"
#include "ring/MessageRing.h"
#include "support/LogFileDecoder.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <memory>
#include <string>
#include <vector>

// "Now" for the log writer under test: whatever the test last set.
inline SYSTEMTIME testNow = {};
inline void WINAPI TestClock(LPSYSTEMTIME now) { *now = testNow; }

inline SYSTEMTIME LocalTime(WORD year, WORD month, WORD day, WORD hour, WORD minute, WORD second = 0)
{
    return {year, month, 0, day, hour, minute, second, 0};
}

// A time as a number that orders like the time itself.
inline ULONGLONG Ticks(const SYSTEMTIME& time)
{
    FILETIME file = {};
    ::SystemTimeToFileTime(&time, &file);
    return (static_cast<ULONGLONG>(file.dwHighDateTime) << 32) | file.dwLowDateTime;
}

inline std::wstring LineText(int n) { return L"line " + std::to_wstring(n); }

// Adds "line <first>" .. "line <first + count - 1>".
inline void AddLines(MessageRing& ring, int first, int count)
{
    for (int n = first; n < first + count; ++n)
        ring.AddMessage(LineText(n).c_str());
}

using Events = std::vector<std::wstring>;

// The event a system error box for `code` is recorded as.
inline std::wstring SystemBoxEvent(DWORD code) { return L"system " + std::to_wstring(code); }

// The events of a successful switch to a new log file.
inline Events NewFileEvents()
{
    return {L"stop 0",       L"stop 1",     L"stop 2",         L"clear view",
            L"start 0 1000", L"start 1 55", L"start 2 900000", L"refresh view"};
}

// Stands in for the main window: every timer change, box and view request
// becomes one line of `events`, in order, so tests can assert the sequence.
class RecordingHost : public LogHost {
public:
    Events events;
    // Read when the disk-full announcement arrives.
    const LogWriter* writer = nullptr;

    void StartTimer(LogTimer timer, UINT periodMs) override
    {
        events.push_back(L"start " + std::to_wstring(static_cast<int>(timer)) + L" " +
                         std::to_wstring(periodMs));
    }
    void StopTimer(LogTimer timer) override
    {
        events.push_back(L"stop " + std::to_wstring(static_cast<int>(timer)));
    }
    void ShowErrorBox(UINT textId) override { events.push_back(L"box " + std::to_wstring(textId)); }
    void ShowSystemErrorBox(DWORD code) override { events.push_back(SystemBoxEvent(code)); }
    void AnnounceDiskFull() override
    {
        events.push_back(L"announce " + std::to_wstring(writer != nullptr ? writer->DiskFullState() : -1));
    }
    void LogListCleared() override { events.push_back(L"clear view"); }
    void NewLogFileStarted() override { events.push_back(L"refresh view"); }
    void CurrentLogFileOpened() override { events.push_back(L"drop page"); }
};

// A writer on a real directory, a fresh ring and a recording host, with the
// clock fixed at 14:05:20 on 3 March 2026.
class WriterTest : public ::testing::Test {
protected:
    static constexpr const wchar_t* kCurrentName = L"2603031405.qxl";

    testing_support::TempDir dir;
    std::unique_ptr<MessageRing> ring = std::make_unique<MessageRing>();
    RecordingHost host;
    LogWriter writer{*ring, host, TestClock};

    void SetUp() override
    {
        testNow = LocalTime(2026, 3, 3, 14, 5, 20);
        host.writer = &writer;
        writer.SetSettings(10, 600, 10);
    }

    std::wstring PathOf(const wchar_t* name) const { return dir / name; }
    // Makes `name` the current log file, as start-up does, and forgets the
    // events of that start.
    void Open(const wchar_t* name = kCurrentName)
    {
        ASSERT_EQ(writer.OpenCurrentLogFile(dir.Path().c_str(), name), 0);
        host.events.clear();
    }
    DecodedLog ReadLog(const wchar_t* name = kCurrentName) const
    {
        return DecodeLog(testing_support::ReadFileBytes(PathOf(name)));
    }
};

// Opens a file the way another program might, sharing nothing, so that no
// one else can open it while the handle lives.
inline std::unique_ptr<void, decltype(&::CloseHandle)> OpenExclusively(const std::wstring& path)
{
    return {::CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr), &::CloseHandle};
}
