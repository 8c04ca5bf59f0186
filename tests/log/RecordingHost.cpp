#include "RecordingHost.h"

#include "log/LogWriter.h"

void RecordingHost::StartTimer(UINT_PTR id, UINT periodMs)
{
    events.push_back(L"start " + std::to_wstring(id) + L" " + std::to_wstring(periodMs));
}

void RecordingHost::StopTimer(UINT_PTR id)
{
    events.push_back(L"stop " + std::to_wstring(id));
}

void RecordingHost::ShowErrorBox(UINT textId)
{
    events.push_back(L"box " + std::to_wstring(textId));
}

void RecordingHost::ShowSystemErrorBox(const wchar_t* text, const wchar_t*)
{
    events.push_back(std::wstring(L"system ") + (text != nullptr ? text : L"(none)"));
}

void RecordingHost::AnnounceDiskFull()
{
    events.push_back(L"announce " + std::to_wstring(writer != nullptr ? writer->DiskFullState() : -1));
}

void RecordingHost::ClearViewForNewFile()
{
    events.push_back(L"clear view");
}

void RecordingHost::RefreshViewForNewFile()
{
    events.push_back(L"refresh view");
}

void RecordingHost::DropViewPage()
{
    events.push_back(L"drop page");
}

std::wstring SystemBoxEvent(DWORD code)
{
    wchar_t* text = nullptr;
    ::FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                         FORMAT_MESSAGE_IGNORE_INSERTS,
                     nullptr, code, MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT),
                     reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    std::wstring event = std::wstring(L"system ") + (text != nullptr ? text : L"(none)");
    ::LocalFree(text);
    return event;
}

std::vector<std::wstring> NewFileEvents()
{
    return {L"stop 0",       L"stop 1",        L"stop 2",           L"clear view",
            L"start 0 1000", L"start 1 55",    L"start 2 900000",   L"refresh view"};
}
