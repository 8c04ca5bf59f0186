// Each cost of the program beside the bare platform operation it is built
// on, as a ratio, in one run (./oriel bench):
//   a line through ShowMess        / the same call to a server that does nothing
//   a line through an atom         / a bare SendMessage round trip to the window
//   a flush of 4000 records        / one write of the same bytes
//   start-up on a 10 MB log        / the start of a program that does nothing
// Works on a registered copy of the installation folder; the original is
// registered again at the end.  Each pair of figures is measured in turn,
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
#include "log/LogWriter.h"
#include "msgwnd/MessAtom.h"
#include "ring/MessageRing.h"
#include "support/LogFileDecoder.h"
#include "support/TestFiles.h"

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

struct Pair {
    double ours;
    double bare;
};

// The two measurements taken in turn, `rounds` times each, so that both meet
// the same load of a shared machine; the median of each.
Pair SideBySide(int rounds, const std::function<double()>& ours, const std::function<double()>& bare)
{
    std::vector<double> oursTimes, bareTimes;
    for (int i = 0; i < rounds; ++i) {
        oursTimes.push_back(ours());
        bareTimes.push_back(bare());
    }
    return {MedianOf(oursTimes), MedianOf(bareTimes)};
}

void Row(const char* what, Pair pair, const char* baseline, const char* unit, double scale)
{
    std::printf("%-30s %10.3f %-3s | %-37s %10.3f %-3s | %6.1f\n", what, pair.ours * scale, unit,
                baseline, pair.bare * scale, unit, pair.ours / pair.bare);
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
    const Pair pair = SideBySide(
        7,
        [&] {
            ring.unwrittenPos = ring.writePos;
            for (int i = 0; i < kEarlyFlushPending; ++i)
                ring.AddMessage(L"a pending line of a typical length for the benchmark");
            return Timed([&] { writer.FlushPending(ring.PendingCount()); });
        },
        [&] {
            return Timed([&] {
                HANDLE file = ::CreateFileW(raw.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                            OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
                DWORD written = 0;
                ::SetFilePointer(file, 0, nullptr, FILE_END);
                ::WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
                ::CloseHandle(file);
            });
        });
    Row("flush of 4000 records", pair, "one write of the same 1,088,000 bytes", "ms", 1e3);
    if (host.boxes != 0)
        std::printf("the writer reported %d errors: the flush figure is wrong\n", host.boxes);
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
    std::printf("%-30s %14s | %-37s %14s | %6s\n", "ours", "", "bare platform", "", "ratio");

    const std::wstring program = Quoted(folder + L"\\Oriel.exe");
    const std::wstring nullServerProgram = Quoted(original + L"\\..\\bench\\null_showmess.exe");
    // Up to its window: the log is counted at window creation.
    const Pair startup = SideBySide(
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
        "the same call, a server doing nothing", "us", 1e6);
    Row("a line through an atom",
        SideBySide(9, PerLine([window] {
                       ATOM atom = ::GlobalAddAtomW(L"a line of a typical length for the benchmark");
                       ::SendMessageW(window, WM_MESSATOM, atom, 0);
                       ::GlobalDeleteAtom(atom);
                   }),
                   PerLine([window] { ::SendMessageW(window, WM_NULL, 0, 0); })),
        "SendMessage(WM_NULL) to the window", "us", 1e6);
    ours->Release();
    nothing->Release();
    ::PostMessageW(window, WM_CLOSE, 0, 0);
    server.Wait(20000);
    MeasureFlush();
    Row("start-up on a 10 MB log", startup, "start of a program doing nothing", "ms", 1e3);
    std::printf("%-30s %s\n", "export of a 10 MB log", "not measured: export is not in this build");
    Register(original);
    ::CoUninitialize();
    return 0;
}
