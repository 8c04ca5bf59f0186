// Each cost of the program beside the floor it stands on, the bare platform
// operations it cannot do without, as a ratio, in one run (./oriel bench):
//   a line through ShowMess        / the same call to a server that does nothing
//   a line through an atom         / the bare add-atom, SendMessage, delete-atom
//                                    of the same text (and, second, SendMessage alone)
//   a flush of 4000 records        / 4000 writes of a record each into a file
//                                    opened the same way (and, second, one write)
//   export of a 10 MB log          / one write a line of the same text (and,
//                                    second, reading the log)
//   start-up on a 10 MB log        / the start of a program that does nothing
// Works on a registered copy of the installation folder; the original is
// registered again at the end.  The figures of a row are measured in turn,
// several times, and the medians compared.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "Oriel.h"
#include "bench/NullShowMessClass.h"
#include "bench/SilentHost.h"
#include "log/LogFileIo.h"
#include "log/LogWriter.h"
#include "msgwnd/MessAtom.h"
#include "print/ExportText.h"
#include "ring/MessageRing.h"
#include "support/LogFileDecoder.h"
#include "support/TestFiles.h"
#include "winlayer/Resources.h"

namespace {

using testing_support::RunningProcess;

double Now()
{
    LARGE_INTEGER now, frequency;
    ::QueryPerformanceCounter(&now);
    ::QueryPerformanceFrequency(&frequency);
    return static_cast<double>(now.QuadPart) / static_cast<double>(frequency.QuadPart);
}

// Seconds that `work` takes.
double Timed(const std::function<void()>& work)
{
    const double start = Now();
    work();
    return Now() - start;
}

double MedianOf(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// The medians of the program's figure and of its references.
struct Medians {
    double ours;
    double floor;
    double second = 0;
};

// The measurements taken in turn, `rounds` times each, so that all meet the
// same load of a shared machine; the median of each.
Medians SideBySide(int rounds, const std::function<double()>& ours, const std::function<double()>& floor,
                   const std::function<double()>& second = nullptr)
{
    std::vector<double> oursTimes, floorTimes, secondTimes;
    for (int i = 0; i < rounds; ++i) {
        oursTimes.push_back(ours());
        floorTimes.push_back(floor());
        if (second)
            secondTimes.push_back(second());
    }
    return {MedianOf(oursTimes), MedianOf(floorTimes), second ? MedianOf(secondTimes) : 0};
}

struct Unit {
    const char* name;
    double scale;
};
constexpr Unit kMs = {"ms", 1e3};
constexpr Unit kUs = {"us", 1e6};

void Row(const char* what, const Medians& m, const char* floor, Unit unit, const char* second = nullptr)
{
    std::printf("%-24s %9.3f %-2s | %-48s %9.3f %-2s | %5.2f\n", what, m.ours * unit.scale, unit.name,
                floor, m.floor * unit.scale, unit.name, m.ours / m.floor);
    if (second != nullptr)
        std::printf("%-24s %12s | %-48s %9.3f %-2s | %5.2f\n", "", "", second, m.second * unit.scale,
                    unit.name, m.ours / m.second);
}

std::wstring Quoted(const std::wstring& path)
{
    return L"\"" + path + L"\"";
}

void Register(const std::wstring& folder)
{
    testing_support::RunProcess(Quoted(folder + L"\\Oriel.exe") + L" /RegServer", 30000);
    testing_support::RunProcess(L"regsvr32 /s " + Quoted(folder + L"\\OrielPS.dll"), 30000);
}

void WriteSettings(const std::wstring& folder, const std::wstring& saveDirectory)
{
    const std::wstring text =
        L"[save]\r\nsavedays=0\r\nsavetime=600\r\nlogsize=100\r\nsavedirectory=" + saveDirectory + L"\r\n";
    testing_support::WriteFileBytes(folder + L"\\config\\ShowMess.ini",
                                    std::vector<unsigned char>(text.begin(), text.end()));
}

HWND WaitForWindow(const wchar_t* className)
{
    HWND window;
    for (int i = 0; i < 30000 && (window = ::FindWindowW(className, nullptr)) == nullptr; ++i)
        ::Sleep(1);
    return window;
}

// A ShowMess object of a local server, waited for while the server starts.
IShowMess* CreateLocal(const CLSID& classId)
{
    IShowMess* object = nullptr;
    for (int i = 0; i < 200; ++i) {
        if (SUCCEEDED(::CoCreateInstance(classId, nullptr, CLSCTX_LOCAL_SERVER, IID_IShowMess,
                                         reinterpret_cast<void**>(&object))))
            return object;
        ::Sleep(50);
    }
    return nullptr;
}

constexpr int kLinesPerRound = 200;

// Seconds per line of `kLinesPerRound` lines handed over by `send`.
std::function<double()> PerLine(const std::function<void()>& send)
{
    return [send] {
        return Timed([&] {
                   for (int i = 0; i < kLinesPerRound; ++i)
                       send();
               }) / kLinesPerRound;
    };
}

std::function<double()> ShowMessageLine(IShowMess* object)
{
    return PerLine([object] {
        wchar_t text[] = L"a line of a typical length for the benchmark";
        object->ShowMessage(reinterpret_cast<unsigned short*>(text));
    });
}

void MeasureFlush()
{
    testing_support::TempDir folder;
    static MessageRing ring;
    SilentHost host;
    LogWriter writer(ring, host);
    writer.OpenCurrentLogFile(folder.Path().c_str(), L"2601010000.qxl");
    const std::vector<unsigned char> bytes(static_cast<size_t>(kRecordBytes) * kEarlyFlushPending, 'x');
    const std::wstring raw = folder / L"raw.bin";
    // The file as the writer opens it, positioned at its end.
    const auto openAtEnd = [&raw] {
        HANDLE file = OpenLogFile(raw.c_str(), GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS);
        ::SetFilePointer(file, 0, nullptr, FILE_END);
        return file;
    };
    const Medians medians = SideBySide(
        7,
        [&] {
            ring.unwrittenPos = ring.writePos;
            for (int i = 0; i < kEarlyFlushPending; ++i)
                ring.AddMessage(L"a pending line of a typical length for the benchmark");
            return Timed([&] { writer.FlushPending(ring.PendingCount()); });
        },
        [&] {
            return Timed([&] {
                HANDLE file = openAtEnd();
                DWORD written = 0;
                for (int i = 0; i < kEarlyFlushPending; ++i)
                    ::WriteFile(file, &bytes[static_cast<size_t>(i) * kRecordBytes], kRecordBytes,
                                &written, nullptr);
                ::CloseHandle(file);
            });
        },
        [&] {
            return Timed([&] {
                HANDLE file = openAtEnd();
                DWORD written = 0;
                ::WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
                ::CloseHandle(file);
            });
        });
    Row("flush of 4000 records", medians, "4000 writes of 272 bytes, the file opened alike", kMs,
        "one write of the same 1,088,000 bytes");
    if (host.boxes != 0)
        std::printf("the writer reported %d errors: the flush figure is wrong\n", host.boxes);
}

// A 10 MB log of distinct lines, a line every 10 ms.
void WriteExportLog(const std::wstring& path)
{
    const size_t records = 10 * 1048576 / kRecordBytes - 1;
    std::vector<unsigned char> image = MakeLogImage(L"7.000000", records);
    for (size_t i = 0; i < records; ++i) {
        const size_t ms = i * 10;
        SYSTEMTIME stamp = {2026, 3, 2, 3, static_cast<WORD>(8 + ms / 3600000), static_cast<WORD>(ms / 60000 % 60),
                            static_cast<WORD>(ms / 1000 % 60), static_cast<WORD>(ms % 1000)};
        PutLogRecord(image, i, L"line " + std::to_wstring(i) + L" of the benchmark log, a typical length",
                     stamp);
    }
    testing_support::WriteFileBytes(path, image);
}

// The lines of an export file (each with its CR LF), after its byte-order mark.
std::vector<std::wstring> ExportedLines(const std::wstring& path)
{
    const std::vector<unsigned char> bytes = testing_support::ReadFileBytes(path);
    std::wstring text(reinterpret_cast<const wchar_t*>(bytes.data()) + 1, (bytes.size() - 2) / 2);
    std::vector<std::wstring> lines;
    for (size_t start = 0, end; start < text.size(); start = end + 1) {
        end = text.find(L'\n', start);
        lines.push_back(text.substr(start, end - start + 1));
    }
    return lines;
}

void MeasureExport(const std::wstring& installFolder)
{
    HMODULE language = ::LoadLibraryExW((installFolder + L"\\Lang\\EN\\OrielEN.dll").c_str(), nullptr,
                                        LOAD_LIBRARY_AS_DATAFILE);
    winlayer::SetResourceModule(language);
    testing_support::TempDir folder;
    const std::wstring log = folder / L"2603030800.qxl";
    const std::wstring exported = folder / L"export.txt";
    const std::wstring bare = folder / L"bare.txt";
    WriteExportLog(log);
    ExportLogFile(log.c_str(), exported.c_str(), ExportSource::MainWindow);
    const std::vector<std::wstring> lines = ExportedLines(exported);
    std::vector<unsigned char> block;
    // Both outputs start from no file: an export over an old one is not cut short.
    const Medians medians = SideBySide(
        7,
        [&] {
            ::DeleteFileW(exported.c_str());
            return Timed([&] { ExportLogFile(log.c_str(), exported.c_str(), ExportSource::MainWindow); });
        },
        [&] {
            ::DeleteFileW(bare.c_str());
            return Timed([&] {
                HANDLE file = ::CreateFileW(bare.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ,
                                            nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
                const WCHAR byteOrderMark = 0xFEFF;
                DWORD written = 0;
                ::WriteFile(file, &byteOrderMark, sizeof(byteOrderMark), &written, nullptr);
                for (const std::wstring& line : lines)
                    ::WriteFile(file, line.data(), static_cast<DWORD>(line.size() * sizeof(wchar_t)),
                                &written, nullptr);
                ::CloseHandle(file);
            });
        },
        [&] {
            return Timed([&] {
                HANDLE file = ::CreateFileW(log.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
                block.assign(::GetFileSize(file, nullptr), 0);
                DWORD read = 0;
                ::ReadFile(file, block.data(), static_cast<DWORD>(block.size()), &read, nullptr);
                ::CloseHandle(file);
            });
        });
    char floor[64];
    std::snprintf(floor, sizeof(floor), "%zu writes, a line each, of the same text", lines.size());
    Row("export of a 10 MB log", medians, floor, kMs, "reading the log whole, into a block in use");
    if (testing_support::ReadFileBytes(bare) != testing_support::ReadFileBytes(exported))
        std::printf("the export and its floor wrote different text: the export figure is wrong\n");
}

} // namespace

int main()
{
    ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const std::wstring original = testing_support::InstallDir();
    testing_support::TempDir work;
    const std::wstring folder = work / L"Oriel";
    testing_support::CopyTree(original, folder);
    const std::wstring saveDirectory = work / L"log";
    ::CreateDirectoryW(saveDirectory.c_str(), nullptr);
    WriteSettings(folder, saveDirectory);
    testing_support::WriteFileBytes(saveDirectory + L"\\2601010000.qxl",
                                    MakeLogImage(L"7.000000", 10 * 1048576 / kRecordBytes));
    Register(folder);
    std::printf("%-24s %12s | %-48s %12s | %5s\n", "ours", "", "floor: the bare platform", "", "ratio");

    const std::wstring program = Quoted(folder + L"\\Oriel.exe");
    const std::wstring nullServerProgram = Quoted(original + L"\\..\\bench\\null_showmess.exe");
    // Up to its window: the log is counted at window creation.
    const Medians startup = SideBySide(
        5,
        [&] {
            const double start = Now();
            RunningProcess server(program);
            HWND window = WaitForWindow(L"OrielMessWnd");
            const double elapsed = Now() - start;
            ::PostMessageW(window, WM_CLOSE, 0, 0);
            server.Wait(20000);
            return elapsed;
        },
        [&] { return Timed([&] { testing_support::RunProcess(nullServerProgram + L" --exit", 30000); }); });

    RunningProcess server(program);
    HWND window = WaitForWindow(L"OrielMessWnd");
    IShowMess* ours = CreateLocal(CLSID_ShowMess);
    RunningProcess nullServer(nullServerProgram);
    IShowMess* nothing = CreateLocal(kNullShowMessClass);
    if (ours == nullptr || nothing == nullptr) {
        std::printf("a component server cannot be reached: is OrielPS.dll registered?\n");
        return 1;
    }
    Row("a line through ShowMess", SideBySide(9, ShowMessageLine(ours), ShowMessageLine(nothing)),
        "the same call, a server doing nothing", kUs);
    // The window's handler against a message it leaves to the default
    // procedure, the atom's road around both the same.
    const auto atomLine = [window](UINT message) {
        return PerLine([window, message] {
            ATOM atom = ::GlobalAddAtomW(L"a line of a typical length for the benchmark");
            ::SendMessageW(window, message, atom, 0);
            ::GlobalDeleteAtom(atom);
        });
    };
    Row("a line through an atom",
        SideBySide(9, atomLine(WM_MESSATOM), atomLine(WM_NULL),
                   PerLine([window] { ::SendMessageW(window, WM_NULL, 0, 0); })),
        "add atom, SendMessage(WM_NULL), delete atom", kUs, "SendMessage(WM_NULL) alone");
    ours->Release();
    nothing->Release();
    ::PostMessageW(window, WM_CLOSE, 0, 0);
    server.Wait(20000);
    MeasureFlush();
    MeasureExport(folder);
    Row("start-up on a 10 MB log", startup, "start of a program doing nothing", kMs);
    Register(original);
    ::CoUninitialize();
    return 0;
}
