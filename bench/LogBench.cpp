// Figures for the add path and the log writer, printed as a small table.
// Not a test: nothing here passes or fails except the allocation count of
// the add path, which must be zero (counted through a replaced global
// operator new; the add path calls no C allocation function either).
#include "log/LogFormat.h"
#include "log/LogHost.h"
#include "log/LogWriter.h"
#include "ring/MessageRing.h"
#include "bench/SilentHost.h"

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <vector>

namespace {

unsigned long allocations = 0;

} // namespace

void* operator new(std::size_t size)
{
    ++allocations;
    if (void* block = std::malloc(size != 0 ? size : 1))
        return block;
    throw std::bad_alloc();
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

void operator delete(void* block) noexcept
{
    std::free(block);
}

void operator delete[](void* block) noexcept
{
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}

void operator delete[](void* block, std::size_t) noexcept
{
    std::free(block);
}

namespace {

class Stopwatch {
public:
    Stopwatch() { ::QueryPerformanceCounter(&start_); }
    double Microseconds() const
    {
        LARGE_INTEGER now, frequency;
        ::QueryPerformanceCounter(&now);
        ::QueryPerformanceFrequency(&frequency);
        return 1e6 * static_cast<double>(now.QuadPart - start_.QuadPart) /
               static_cast<double>(frequency.QuadPart);
    }

private:
    LARGE_INTEGER start_;
};

void Row(const char* what, double value, const char* unit, const char* note)
{
    std::printf("%-34s %12.2f %-6s %s\n", what, value, unit, note);
}

std::wstring TempFolder()
{
    wchar_t base[MAX_PATH];
    ::GetTempPathW(MAX_PATH, base);
    std::wstring folder = std::wstring(base) + L"oriel-bench-" + std::to_wstring(::GetCurrentProcessId());
    ::CreateDirectoryW(folder.c_str(), nullptr);
    return folder;
}

void RemoveFolder(const std::wstring& folder)
{
    WIN32_FIND_DATAW found;
    HANDLE search = ::FindFirstFileW((folder + L"\\*.qxl").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            ::DeleteFileW((folder + L"\\" + found.cFileName).c_str());
        } while (::FindNextFileW(search, &found));
        ::FindClose(search);
    }
    ::RemoveDirectoryW(folder.c_str());
}

bool MeasureAddMessage(MessageRing& ring)
{
    constexpr int kLines = 200000;
    const std::wstring text(100, L'x');
    const unsigned long newsBefore = allocations;
    Stopwatch watch;
    for (int i = 0; i < kLines; ++i)
        ring.AddMessage(text.c_str());
    const double perLine = watch.Microseconds() / kLines;
    const unsigned long news = allocations - newsBefore;
    Row("AddMessage, per line", perLine, "us", "100-unit text, no view");
    Row("  operator new calls while adding", static_cast<double>(news), "", "must be 0");
    return news == 0;
}

void MeasureFlush(MessageRing& ring, LogWriter& writer)
{
    ring.unwrittenPos = ring.writePos;
    for (int i = 0; i < kEarlyFlushPending; ++i)
        ring.AddMessage(L"a pending line of a typical length for the benchmark");
    Stopwatch watch;
    writer.FlushPending(ring.PendingCount());
    Row("FlushPending, 4000 records", watch.Microseconds() / 1000.0, "ms", "one write per record");
}

void MeasureSizeCheck(LogWriter& writer)
{
    constexpr int kChecks = 2000;
    Stopwatch watch;
    for (int i = 0; i < kChecks; ++i)
        writer.CurrentLogFileSize();
    Row("CurrentLogFileSize, per call", watch.Microseconds() / kChecks, "us", "runs every 55 ms");
}

void MeasureOpenLargeLog(MessageRing& ring, LogWriter& writer, const std::wstring& folder)
{
    const wchar_t* name = L"2601010000.qxl";
    const std::wstring path = folder + L"\\" + name;
    constexpr DWORD kRecords = 10 * 1048576 / kRecordBytes;
    {
        std::vector<unsigned char> bytes(static_cast<size_t>(kRecordBytes) * (kRecords + 1), 0);
        wchar_t version[kLogHeaderTextUnits];
        FormatLogVersion(version);
        std::memcpy(bytes.data(), version, sizeof(version));
        HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
        DWORD written = 0;
        ::WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
        ::CloseHandle(file);
    }
    Stopwatch watch;
    const int result = writer.OpenCurrentLogFile(folder.c_str(), name);
    const double elapsed = watch.Microseconds() / 1000.0;
    Row("OpenCurrentLogFile, 10 MB log", elapsed, "ms", result == 0 && ring.lineCount == static_cast<int>(kRecords) ? "counted" : "FAILED");
}

} // namespace

int main()
{
    static MessageRing ring;
    SilentHost host;
    const std::wstring folder = TempFolder();
    bool clean = true;
    {
        LogWriter writer(ring, host);
        std::printf("%-34s %12s %-6s %s\n", "measurement", "value", "unit", "note");
        clean = MeasureAddMessage(ring);
        writer.OpenCurrentLogFile(folder.c_str(), L"2601010001.qxl");
        MeasureFlush(ring, writer);
        MeasureSizeCheck(writer);
        MeasureOpenLargeLog(ring, writer, folder);
    }
    if (host.boxes != 0)
        std::printf("the writer reported %d errors during the run\n", host.boxes);
    RemoveFolder(folder);
    return clean && host.boxes == 0 ? 0 : 1;
}
