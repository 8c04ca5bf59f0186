#pragma once
#include "log/LogHost.h"
#include "log/LogWriter.h"

#include <string>
#include <vector>

// The event a system error box for `code` is recorded as.
inline std::wstring SystemBoxEvent(DWORD code) { return L"system " + std::to_wstring(code); }

// Stands in for the main window: every timer change, box and view request
// becomes one line of `events`, in order, so tests can assert the sequence.
class RecordingHost : public LogHost {
public:
    std::vector<std::wstring> events;
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

// The events of a successful switch to a new log file.
inline std::vector<std::wstring> NewFileEvents()
{
    return {L"stop 0",       L"stop 1",     L"stop 2",         L"clear view",
            L"start 0 1000", L"start 1 55", L"start 2 900000", L"refresh view"};
}
