#pragma once
#include "log/LogHost.h"

#include <string>
#include <vector>

class LogWriter;

// Stands in for the main window: every timer change, box and view request
// becomes one line of `events`, in order, so tests can assert the sequence.
//   "start <id> <ms>", "stop <id>", "box <string id>", "system <text>",
//   "announce <diskFullState>", "clear view", "refresh view", "drop page"
class RecordingHost : public LogHost {
public:
    std::vector<std::wstring> events;
    // Read when the disk-full announcement arrives.
    const LogWriter* writer = nullptr;

    void StartTimer(UINT_PTR id, UINT periodMs) override;
    void StopTimer(UINT_PTR id) override;
    void ShowErrorBox(UINT textId) override;
    void ShowSystemErrorBox(const wchar_t* text, const wchar_t* caption) override;
    void AnnounceDiskFull() override;
    void ClearViewForNewFile() override;
    void RefreshViewForNewFile() override;
    void DropViewPage() override;
};

// The event a system error box for `code` is recorded as.
std::wstring SystemBoxEvent(DWORD code);

// The events of a successful switch to a new log file.
std::vector<std::wstring> NewFileEvents();
