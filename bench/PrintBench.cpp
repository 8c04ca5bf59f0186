// Figures for export and printing on a 10 MB log, side by side with the
// plainest way of doing the same work: export against a plain read of the
// file, range selection by binary search against a scan of every record.
// Not a test; run by hand: scripts/wine-run build/bench/oriel_print_bench.exe
#include <windows.h>
#include <shlwapi.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "msgwnd/MessageRecord.h"
#include "print/ExportText.h"
#include "print/LocalTimeOrder.h"
#include "print/PrintRecords.h"
#include "winlayer/Resources.h"

namespace {

constexpr DWORD kLogBytes = 10 * 1048576;
constexpr int kRuns = 5;

double Now()
{
    LARGE_INTEGER now, frequency;
    ::QueryPerformanceCounter(&now);
    ::QueryPerformanceFrequency(&frequency);
    return 1e3 * static_cast<double>(now.QuadPart) / static_cast<double>(frequency.QuadPart);
}

// Best of kRuns, in milliseconds.
template <class Work>
double Best(Work work)
{
    double best = 1e300;
    for (int run = 0; run < kRuns; ++run) {
        const double start = Now();
        work();
        best = std::min(best, Now() - start);
    }
    return best;
}

SYSTEMTIME StampOf(int i)
{
    // A line every 10 ms from 2026-03-03 08:00.
    SYSTEMTIME t = {2026, 3, 2, 3, 8, 0, 0, 0};
    const int ms = i * 10;
    t.wHour = static_cast<WORD>(8 + ms / 3600000);
    t.wMinute = static_cast<WORD>(ms / 60000 % 60);
    t.wSecond = static_cast<WORD>(ms / 1000 % 60);
    t.wMilliseconds = static_cast<WORD>(ms % 1000);
    return t;
}

int WriteLog(const std::wstring& path)
{
    const int slots = static_cast<int>(kLogBytes / kRecordBytes);
    std::vector<MessageRecord> records(slots);
    const wchar_t version[] = L"7.000000";
    std::copy(version, version + 8, reinterpret_cast<wchar_t*>(&records[0]));
    for (int i = 1; i < slots; ++i) {
        records[i].time = StampOf(i);
        _snwprintf(records[i].text, kMessageTextUnits, L"line %d of the benchmark log, a typical length", i);
    }
    HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    ::WriteFile(file, records.data(), slots * kRecordBytes, &written, nullptr);
    ::CloseHandle(file);
    return slots;
}

HANDLE OpenRead(const std::wstring& path)
{
    return ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
}

// The scan a selection without search would do: every record's time, read
// in one block, compared in order.
void ScanRange(const std::wstring& path, const SYSTEMTIME& from, const SYSTEMTIME& to, int* first, int* last)
{
    HANDLE file = OpenRead(path);
    const DWORD size = ::GetFileSize(file, nullptr);
    std::vector<MessageRecord> records(size / kRecordBytes);
    DWORD read = 0;
    ::ReadFile(file, records.data(), static_cast<DWORD>(records.size()) * kRecordBytes, &read, nullptr);
    ::CloseHandle(file);
    *first = static_cast<int>(records.size());
    *last = 0;
    for (int slot = 1; slot < static_cast<int>(records.size()); ++slot) {
        if (*first == static_cast<int>(records.size()) && CompareLocalTimes(records[slot].time, from) >= 0)
            *first = slot;
        if (CompareLocalTimes(records[slot].time, to) <= 0)
            *last = slot;
    }
}

} // namespace

int wmain()
{
    wchar_t module[MAX_PATH];
    ::GetModuleFileNameW(nullptr, module, MAX_PATH);
    ::PathRemoveFileSpecW(module);
    const std::wstring english = std::wstring(module) + L"\\..\\Oriel\\Lang\\EN\\OrielEN.dll";
    HMODULE language = ::LoadLibraryExW(english.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    if (language == nullptr) {
        std::printf("cannot load %ls\n", english.c_str());
        return 1;
    }
    winlayer::SetResourceModule(language);

    wchar_t temp[MAX_PATH];
    ::GetTempPathW(MAX_PATH, temp);
    const std::wstring log = std::wstring(temp) + L"oriel-print-bench.qxl";
    const std::wstring text = std::wstring(temp) + L"oriel-print-bench.txt";
    const int slots = WriteLog(log);
    std::printf("log: %d records, %lu bytes; best of %d runs\n\n", slots - 1,
                static_cast<unsigned long>(slots * kRecordBytes), kRuns);

    std::vector<unsigned char> block(slots * kRecordBytes);
    const double plainRead = Best([&] {
        HANDLE file = OpenRead(log);
        DWORD read = 0;
        ::ReadFile(file, block.data(), static_cast<DWORD>(block.size()), &read, nullptr);
        ::CloseHandle(file);
    });
    const double exportTime = Best([&] {
        ::DeleteFileW(text.c_str());
        ExportLogFile(log.c_str(), text.c_str(), ExportSource::MainWindow);
    });
    std::printf("%-44s %10.2f ms\n", "plain read of the log (one ReadFile)", plainRead);
    std::printf("%-44s %10.2f ms  (%.0f lines/ms)\n", "export to text (one WriteFile a line)", exportTime,
                (slots - 1) / exportTime);

    // A range in the middle of the log: a tenth of it.
    const SYSTEMTIME from = StampOf(slots / 2);
    const SYSTEMTIME to = StampOf(slots / 2 + slots / 10);
    int first = 0, last = 0, scanFirst = 0, scanLast = 0;
    HANDLE file = OpenRead(log);
    const double search = Best([&] { SelectPrintRecords(file, RangeBetween, from, to, &first, &last); });
    ::CloseHandle(file);
    const double scan = Best([&] { ScanRange(log, from, to, &scanFirst, &scanLast); });
    std::printf("%-44s %10.3f ms  slots %d..%d\n", "range selection, binary search (272 B a probe)",
                search, first, last);
    std::printf("%-44s %10.3f ms  slots %d..%d\n", "range selection, scan of every record", scan,
                scanFirst, scanLast);

    ::DeleteFileW(log.c_str());
    ::DeleteFileW(text.c_str());
    return first == scanFirst && last == scanLast ? 0 : 2;
}
