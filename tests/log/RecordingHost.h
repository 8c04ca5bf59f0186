#pragma once
#include "log/LogHost.h"

#include <string>
#include <vector>

class LogWriter;

// Stands in for the main window: every timer change, box and view request
// becomes one line of `events`, in order, so tests can assert the sequence.
//   "start <timer> <ms>", "stop <timer>", "box <string id>", "system <error code>",
//   "announce <diskFullState>", "clear view", "refresh view", "drop page"
class RecordingHost : public LogHost {
public:
    std::vector<std::wstring> events;
    // Read when the disk-full announcement arrives.
    const LogWriter* writer = nullptr;

    void StartTimer(LogTimer timer, UINT periodMs) override;
    void StopTimer(LogTimer timer) override;
    void ShowErrorBox(UINT textId) override;
    void ShowSystemErrorBox(DWORD code) override;
    void AnnounceDiskFull() override;
    void LogListCleared() override;
    void NewLogFileStarted() override;
    void CurrentLogFileOpened() override;
};

// The event a system error box for `code` is recorded as.
std::wstring SystemBoxEvent(DWORD code);

// The events of a successful switch to a new log file.
std::vector<std::wstring> NewFileEvents();
