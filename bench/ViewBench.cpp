// Figures for the message view with a real, restored window: lines per
// second through AddMessage while the view follows the tail (painting
// included), and the cost of the refreshes that read the file part of a
// 10 MB log.  Not a test: it prints a small table.
//
// Run under Wine on a display: scripts/wine-run build/bench/oriel_view_bench.exe
#include <windows.h>
#include <shlwapi.h>

#include <cstdio>
#include <cstring>
#include <cwchar>
#include <string>
#include <vector>

#include "lang/ResourceIds.h"
#include "msgwnd/MessWnd.h"
#include "winlayer/Resources.h"

namespace {

double Seconds()
{
    LARGE_INTEGER frequency, now;
    ::QueryPerformanceFrequency(&frequency);
    ::QueryPerformanceCounter(&now);
    return static_cast<double>(now.QuadPart) / static_cast<double>(frequency.QuadPart);
}

void Pump()
{
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        if (message.message != WM_QUIT)
            ::DispatchMessageW(&message);
}

std::wstring Directory()
{
    wchar_t path[MAX_PATH];
    ::GetModuleFileNameW(nullptr, path, MAX_PATH);
    ::PathRemoveFileSpecW(path);
    return path;
}

// A log of `count` records in `directory`, written in one go.
void WriteLog(const std::wstring& directory, int count)
{
    std::vector<MessageRecord> records(count + 1);
    std::memset(records.data(), 0, records.size() * sizeof(MessageRecord));
    std::memcpy(records[0].text, L"7.000000", 16);
    for (int i = 1; i <= count; ++i) {
        ::GetLocalTime(&records[i].time);
        swprintf(records[i].text, kMessageTextUnits, L"PLC 3 tag %d changed to %d", i, i * 7);
    }
    HANDLE file = ::CreateFileW((directory + L"\\2601010000.qxl").c_str(), GENERIC_WRITE, 0, nullptr,
                                CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    ::WriteFile(file, records.data(), static_cast<DWORD>(records.size() * sizeof(MessageRecord)),
                &written, nullptr);
    ::CloseHandle(file);
}

void SendKey(HWND window, WPARAM key, bool control)
{
    BYTE keys[256];
    ::GetKeyboardState(keys);
    keys[VK_CONTROL] = control ? 0x80 : 0;
    ::SetKeyboardState(keys);
    ::SendMessageW(window, WM_KEYDOWN, key, 0);
}

double MicrosecondsPerKey(HWND window, WPARAM key, bool control, int repeats)
{
    const double start = Seconds();
    for (int i = 0; i < repeats; ++i)
        SendKey(window, key, control);
    return (Seconds() - start) * 1e6 / repeats;
}

} // namespace

int main()
{
    const std::wstring here = Directory();
    HMODULE english = ::LoadLibraryW((here + L"\\..\\Oriel\\Lang\\EN\\OrielEN.dll").c_str());
    if (english == nullptr) {
        std::printf("build the installation folder first (OrielEN.dll not found)\n");
        return 1;
    }
    winlayer::SetResourceModule(english);

    const std::wstring logDir = here + L"\\bench-log";
    ::CreateDirectoryW(logDir.c_str(), nullptr);
    ::CreateDirectoryW((here + L"\\config").c_str(), nullptr);
    const int records = 10 * 1048576 / static_cast<int>(kRecordBytes) - 1;
    WriteLog(logDir, records);
    ::WritePrivateProfileStringW(L"save", L"savedirectory", logDir.c_str(),
                                 (here + L"\\config\\ShowMess.ini").c_str());

    static CMessWnd window;
    CMessWnd::RegisterClass(::GetModuleHandleW(nullptr), L"OrielMessWnd", nullptr);
    RECT bounds = {50, 50, 850, 650};
    HWND hwnd = window.CreateMainWindow(::GetModuleHandleW(nullptr), L"OrielMessWnd", L"bench",
                                        ::LoadMenuW(english, MAKEINTRESOURCEW(IDR_MAIN_MENU)), &bounds);
    ::ShowWindow(hwnd, SW_RESTORE);
    Pump();
    std::printf("log: %d records (10 MB), %d lines per page\n", records, window.View().LinesPerPage());

    const int lines = 2000;
    double start = Seconds();
    for (int i = 0; i < lines; ++i) {
        window.AddMessage(L"Valve V-101 opened by operator station 2");
        Pump();
    }
    double elapsed = Seconds() - start;
    std::printf("AddMessage, following the tail, painted: %8.0f lines/s (%.0f us per line)\n",
                lines / elapsed, elapsed * 1e6 / lines);

    SendKey(hwnd, VK_HOME, true);
    std::printf("Page Down in the file part:               %8.0f us\n",
                MicrosecondsPerKey(hwnd, VK_NEXT, false, 200));
    std::printf("Ctrl+Home:                                %8.0f us\n",
                MicrosecondsPerKey(hwnd, VK_HOME, true, 200));
    std::printf("Ctrl+End:                                 %8.0f us\n",
                MicrosecondsPerKey(hwnd, VK_END, true, 200));

    // Hidden, the scroll bar is not redrawn: what remains is the page refill.
    ::ShowWindow(hwnd, SW_HIDE);
    SendKey(hwnd, VK_HOME, true);
    std::printf("Page Down, window hidden (refill only):   %8.0f us\n",
                MicrosecondsPerKey(hwnd, VK_NEXT, false, 200));

    ::DestroyWindow(hwnd);
    Pump();
    ::DeleteFileW((here + L"\\config\\ShowMess.ini").c_str());
    return 0;
}
