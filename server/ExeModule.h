#pragma once
#include <windows.h>

#include <atomic>

#include "server/LineSink.h"

// The process's module object as a component server: it counts the locks
// that live component objects and class-factory locks hold, and ends the
// process through a monitor thread 5 seconds after the last one is let go.
// The main window holds no lock, so a program started by hand that no
// client has used stays until its window is closed.
class CExeModule {
public:
    // `mainThreadId`: the thread that runs the message loop and gets WM_QUIT.
    void Init(HINSTANCE instance, DWORD mainThreadId);

    HINSTANCE Instance() const { return instance_; }

    LONG Lock();
    // Returns the new count.  At 0 it marks activity and wakes the monitor.
    LONG Unlock();
    LONG LockCount() const { return lockCount_; }

    // Creates the shutdown event and the monitor thread; true when both exist.
    bool StartMonitor();

    // The main window, once start-up has made it; null before.
    LineSink* lineSink = nullptr;
    DWORD mainThreadId = 0;
    HANDLE shutdownEvent = nullptr;     // auto-reset; signalled when the count reaches 0
    std::atomic<bool> activity{false};  // a release happened during the current wait

private:
    static DWORD WINAPI MonitorThread(void* module);
    void MonitorShutdown();

    HINSTANCE instance_ = nullptr;
    volatile LONG lockCount_ = 0;
};

extern CExeModule exeModule;
