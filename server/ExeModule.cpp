#include "server/ExeModule.h"

CExeModule exeModule;

namespace {
// How long the server waits, after the last release, for a new client.
constexpr DWORD kShutdownDelayMs = 5000;
}

void CExeModule::Init(HINSTANCE instance, DWORD threadId)
{
    instance_ = instance;
    mainThreadId = threadId;
}

LONG CExeModule::Lock()
{
    return ::InterlockedIncrement(&lockCount_);
}

LONG CExeModule::Unlock()
{
    LONG count = ::InterlockedDecrement(&lockCount_);
    if (count == 0) {
        activity = true;
        ::SetEvent(shutdownEvent);
    }
    return count;
}

bool CExeModule::StartMonitor()
{
    shutdownEvent = ::CreateEventW(nullptr, FALSE, FALSE, nullptr);
    if (shutdownEvent == nullptr)
        return false;
    HANDLE thread = ::CreateThread(nullptr, 0, MonitorThread, this, 0, nullptr);
    if (thread == nullptr)
        return false;
    ::CloseHandle(thread);
    return true;
}

DWORD WINAPI CExeModule::MonitorThread(void* module)
{
    static_cast<CExeModule*>(module)->MonitorShutdown();
    return 0;
}

// Waits for the count to reach 0, then for 5 quiet seconds: every release
// in between (the event again) starts the 5 seconds over.  A client that
// took and dropped an object during the wait, or one that still holds one
// at its end, sends the monitor back to waiting for the next release.
void CExeModule::MonitorShutdown()
{
    for (;;) {
        ::WaitForSingleObject(shutdownEvent, INFINITE);
        DWORD wait;
        do {
            activity = false;
            wait = ::WaitForSingleObject(shutdownEvent, kShutdownDelayMs);
        } while (wait == WAIT_OBJECT_0);
        if (!activity && lockCount_ == 0)
            break;
    }
    // The window is left as it is: pending lines are not written on this road.
    ::CloseHandle(shutdownEvent);
    ::PostThreadMessageW(mainThreadId, WM_QUIT, 0, 0);
}
