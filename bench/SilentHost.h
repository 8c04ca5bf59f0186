#pragma once
#include "log/LogHost.h"

// A main window that never appears: the writer's requests go nowhere, except
// that a box would mean the measurement went wrong.
class SilentHost : public LogHost {
public:
    int boxes = 0;
    void StartTimer(LogTimer, UINT) override {}
    void StopTimer(LogTimer) override {}
    void ShowErrorBox(UINT) override { ++boxes; }
    void ShowSystemErrorBox(DWORD) override { ++boxes; }
    void AnnounceDiskFull() override {}
    void LogListCleared() override {}
    void NewLogFileStarted() override {}
    void CurrentLogFileOpened() override {}
};
