#include "RecordingHost.h"

#include "log/LogWriter.h"

void RecordingHost::StartTimer(LogTimer timer, UINT periodMs)
{
    events.push_back(L"start " + std::to_wstring(static_cast<int>(timer)) + L" " +
                     std::to_wstring(periodMs));
}

void RecordingHost::StopTimer(LogTimer timer)
{
    events.push_back(L"stop " + std::to_wstring(static_cast<int>(timer)));
}

void RecordingHost::ShowErrorBox(UINT textId)
{
    events.push_back(L"box " + std::to_wstring(textId));
}

void RecordingHost::ShowSystemErrorBox(DWORD code)
{
    events.push_back(SystemBoxEvent(code));
}

void RecordingHost::AnnounceDiskFull()
{
    events.push_back(L"announce " + std::to_wstring(writer != nullptr ? writer->DiskFullState() : -1));
}

void RecordingHost::LogListCleared()
{
    events.push_back(L"clear view");
}

void RecordingHost::NewLogFileStarted()
{
    events.push_back(L"refresh view");
}

void RecordingHost::CurrentLogFileOpened()
{
    events.push_back(L"drop page");
}

std::wstring SystemBoxEvent(DWORD code)
{
    return L"system " + std::to_wstring(code);
}

std::vector<std::wstring> NewFileEvents()
{
    return {L"stop 0",       L"stop 1",        L"stop 2",           L"clear view",
            L"start 0 1000", L"start 1 55",    L"start 2 900000",   L"refresh view"};
}
