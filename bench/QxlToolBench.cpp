// Figures for qxltool on a large log set: a one-minute range found by
// binary search against reading every record, and the whole set dumped as
// CSV.  Not a test.  Run by scripts/qxltool-bench.sh, which makes the set
// in a temporary directory and removes it afterwards:
//   qxltool_bench.exe DIR [FILES [RECORDS_PER_FILE]]
// An empty DIR is filled first: FILES files (100) of RECORDS_PER_FILE
// records (38550, 10 MB a file as the window's default rollover size).
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <cstdio>
#include <cwchar>
#include <string>
#include <vector>

#include "log/LogDirectory.h"
#include "log/LogFormat.h"
#include "log/LogFileIo.h"
#include "ring/MessageRecord.h"
#include "tools/qxltool/Commands.h"
#include "tools/qxltool/TimeText.h"

namespace {

double Now()
{
    LARGE_INTEGER counter, frequency;
    ::QueryPerformanceCounter(&counter);
    ::QueryPerformanceFrequency(&frequency);
    return static_cast<double>(counter.QuadPart) / static_cast<double>(frequency.QuadPart);
}

const wchar_t* const kTexts[] = {
    L"Pump P-%03u started", L"Valve V-%u opened by operator station 2",
    L"Tank T-%u level high: 93.5 %%", L"\x6CF5 P-%03u \x505C\x6B62",
    L"Driver COM%u: timeout waiting for reply from PLC rack 4, retry 1 of 3",
    L"Alarm %u acknowledged"};

// Local time `ms` milliseconds after 2026-11-20 00:00 (no month change in
// the few days the set spans).
SYSTEMTIME TimeAt(unsigned long long ms)
{
    const unsigned long long s = ms / 1000;
    return SYSTEMTIME{2026, 11, 0, static_cast<WORD>(20 + s / 86400), static_cast<WORD>(s / 3600 % 24),
                      static_cast<WORD>(s / 60 % 60), static_cast<WORD>(s % 60), static_cast<WORD>(ms % 1000)};
}

// Writes the set: records 1 to 99 ms apart, each file started in a new minute.
void Generate(const std::wstring& dir, int files, int recordsPerFile)
{
    std::vector<MessageRecord> records(static_cast<size_t>(recordsPerFile) + 1);
    unsigned long long ms = 0;
    unsigned seed = 1;
    for (int f = 0; f < files; ++f) {
        ms = (ms / 60000 + 1) * 60000;
        std::fill(records.begin(), records.end(), MessageRecord{});
        wchar_t version[kLogHeaderTextUnits];
        FormatLogVersion(version);
        std::memcpy(&records[0], version, sizeof(version));
        wchar_t name[kLogFileNameBufferUnits];
        MakeLogFileName(TimeAt(ms), name);
        for (int i = 1; i <= recordsPerFile; ++i) {
            seed = seed * 1103515245u + 12345u;
            ms += 1 + (seed >> 16) % 99;
            records[static_cast<size_t>(i)].time = TimeAt(ms);
            _snwprintf(records[static_cast<size_t>(i)].text, kMessageTextUnits, kTexts[(seed >> 8) % 6], i % 1000);
        }
        wchar_t path[MAX_PATH];
        JoinLogPath(path, dir.c_str(), name);
        HANDLE file = OpenLogFile(path, GENERIC_WRITE, CREATE_ALWAYS);
        DWORD written = 0;
        ::WriteFile(file, records.data(), static_cast<DWORD>(records.size() * sizeof(MessageRecord)), &written, nullptr);
        ::CloseHandle(file);
    }
}

// Runs the dump command in-process with standard output sent to `output`;
// returns its time in seconds.
double TimeDump(std::vector<std::wstring> args, const wchar_t* output)
{
    HANDLE sink = ::CreateFileW(output, GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, 0, nullptr);
    HANDLE saved = ::GetStdHandle(STD_OUTPUT_HANDLE);
    ::SetStdHandle(STD_OUTPUT_HANDLE, sink);
    QxlOptions options;
    std::wstring error;
    args.insert(args.begin(), L"dump");
    if (!ParseQxlOptions(args, options, error))
        std::fwprintf(stderr, L"bad arguments: %ls\n", error.c_str());
    const double start = Now();
    const int result = RunDump(options, L"");
    const double seconds = Now() - start;
    ::SetStdHandle(STD_OUTPUT_HANDLE, saved);
    ::CloseHandle(sink);
    if (result != 0)
        std::fprintf(stderr, "dump ended with %d\n", result);
    return seconds;
}

std::string FileText(const wchar_t* path)
{
    std::string text;
    HANDLE file = ::CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    char buffer[256];
    DWORD read = 0;
    if (::ReadFile(file, buffer, sizeof(buffer), &read, nullptr))
        text.assign(buffer, read);
    ::CloseHandle(file);
    while (!text.empty() && text.back() == '\n')
        text.pop_back();
    return text;
}

std::wstring Wide(const std::string& text)
{
    return std::wstring(text.begin(), text.end());
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    if (argc < 2) {
        std::fprintf(stderr, "usage: qxltool_bench DIR [FILES [RECORDS_PER_FILE]]\n");
        return 2;
    }
    const std::wstring dir = argv[1];
    const int files = argc > 2 ? _wtoi(argv[2]) : 100;
    const int perFile = argc > 3 ? _wtoi(argv[3]) : 38550;
    int existing = 0;
    ForEachLogFile(dir.c_str(), false, [&](const wchar_t*) { ++existing; });
    if (existing == 0) {
        const double start = Now();
        Generate(dir, files, perFile);
        std::printf("generated %d files of %d records (%.2f GB) in %.1f s\n", files, perFile,
                    files * (perFile + 1.0) * 272 / 1e9, Now() - start);
        existing = files;
    }
    const std::wstring countFile = dir + L"\\count.txt";

    // A minute in the middle of the set.
    const SYSTEMTIME middle = TimeAt((files / 2) * static_cast<unsigned long long>(perFile) * 50 + 30000);
    const std::wstring minute = Wide(IsoTime(middle).substr(0, 16));
    std::vector<double> ranged;
    for (int run = 0; run < 7; ++run)
        ranged.push_back(TimeDump({L"--count", L"--from", minute, L"--to", minute, dir}, countFile.c_str()));
    const std::string inMinute = FileText(countFile.c_str());
    std::sort(ranged.begin(), ranged.end());

    const double scan = TimeDump({L"--count", dir}, countFile.c_str());
    const double records = std::stod(FileText(countFile.c_str()));
    const double csv = TimeDump({L"--csv", dir}, L"NUL");
    const double json = TimeDump({L"--json", dir}, L"NUL");

    std::printf("%d files, %.0f records, %.2f GB\n", existing, records, (records + existing) * 272 / 1e9);
    std::printf("minute: %ls\n", minute.c_str());
    std::printf("one-minute range (%ls, %s records) by binary search: median %.2f ms, min %.2f ms, max %.2f ms of 7\n",
                minute.c_str(), inMinute.c_str(), ranged[3] * 1e3, ranged[0] * 1e3, ranged[6] * 1e3);
    std::printf("reading every record (dump --count): %.2f s, %.0f records/s\n", scan, records / scan);
    std::printf("dump --csv to NUL: %.2f s, %.0f records/s, %.0f MB/s of log\n", csv, records / csv,
                records * 272 / csv / 1e6);
    std::printf("dump --json to NUL: %.2f s, %.0f records/s\n", json, records / json);
    ::DeleteFileW(countFile.c_str());
    return 0;
}
