// The fuzzing engine's program: runs the driver's seeds, then mutated
// inputs until its time or count is up, and reports what it tried.  A
// crash, an undefined-behaviour trap, a library assertion, a hang or a
// failed property ends the run at once, with the input saved beside the
// others so that it can be run again alone:
//   driver.exe [-seconds=N] [-runs=N] [-seed=N] [-max_len=N] [-timeout=N]
//              [-artifacts=DIR] CORPUS_DIR...     fuzz from these seeds
//   driver.exe FILE...                            run these inputs once each
#include <windows.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <string>
#include <vector>

#include "tools/fuzz/FuzzBoxes.h"
#include "tools/fuzz/FuzzDriver.h"
#include "tools/fuzz/Mutator.h"

namespace {

struct Options {
    double seconds = 10;
    unsigned long long runs = 0;  // 0: as many as the time allows
    unsigned long long seed = 1;
    std::size_t maxLen = 64 * 1024;
    DWORD timeoutMs = 20000;
    std::wstring artifacts = L".";
    std::vector<std::wstring> corpus;
};

// What the handlers need when an input goes wrong; set before each run.
struct Current {
    std::wstring driver;
    std::wstring artifacts;
    const FuzzBytes* input = nullptr;
    volatile LONGLONG startedMs = 0;  // 0 while no input runs
    unsigned long long runs = 0;
    ULONGLONG campaignStartMs = 0;
} current;

std::wstring scratchFolder;

ULONGLONG NowMs() { return ::GetTickCount64(); }

void RemoveScratchFolder()
{
    WIN32_FIND_DATAW found;
    HANDLE search = ::FindFirstFileW((scratchFolder + L"*").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do
            ::DeleteFileW((scratchFolder + found.cFileName).c_str());
        while (::FindNextFileW(search, &found));
        ::FindClose(search);
    }
    ::RemoveDirectoryW(scratchFolder.c_str());
}

void PrintSummary(const char* finding)
{
    const double seconds = (NowMs() - current.campaignStartMs) / 1000.0;
    auto count = [&](const char* kind) { return finding != nullptr && std::strcmp(finding, kind) == 0 ? 1 : 0; };
    std::printf("%ls: %llu inputs in %.1f s (%.0f a second); crashes %d, hangs %d, traps %d, "
                "assertions %d, failed properties %d\n",
                current.driver.c_str(), current.runs, seconds, seconds > 0 ? current.runs / seconds : 0.0,
                count("crash"), count("hang"), count("trap"), count("assertion"), count("property"));
    std::fflush(stdout);
}

// Saves the input that went wrong, says how to run it again and ends the
// process without unwinding through the state the input broke.
[[noreturn]] void ReportFinding(const char* kind, const std::string& detail)
{
    std::wstring saved = L"(no input)";
    if (current.input != nullptr) {
        unsigned long long hash = 14695981039346656037ull;
        for (std::uint8_t byte : *current.input)
            hash = (hash ^ byte) * 1099511628211ull;
        wchar_t name[64];
        std::swprintf(name, 64, L"\\%hs-%016llx", kind, hash);
        saved = current.artifacts + name;
        WriteWholeFile(saved, current.input->data(), current.input->size());
    }
    std::fprintf(stderr, "==oriel-fuzz== %s: %s\n==oriel-fuzz== input saved as %ls; run it again with: %ls %ls\n",
                 kind, detail.c_str(), saved.c_str(), current.driver.c_str(), saved.c_str());
    std::fflush(stderr);
    PrintSummary(kind);
    RemoveScratchFolder();
    ::TerminateProcess(::GetCurrentProcess(), 3);
    std::abort();
}

std::string ExceptionText(const EXCEPTION_RECORD& record)
{
    char text[80];
    std::snprintf(text, sizeof(text), "exception 0x%08lx at %p", record.ExceptionCode, record.ExceptionAddress);
    return text;
}

LONG WINAPI OnUnhandledException(EXCEPTION_POINTERS* info)
{
    ReportFinding("crash", ExceptionText(*info->ExceptionRecord));
}

// The checked build turns undefined behaviour into an illegal instruction.
// It is caught where it happens, before the platform could swallow it in a
// window procedure.
LONG WINAPI OnTrap(EXCEPTION_POINTERS* info)
{
    if (info->ExceptionRecord->ExceptionCode == EXCEPTION_ILLEGAL_INSTRUCTION)
        ReportFinding("trap", "undefined behaviour: " + ExceptionText(*info->ExceptionRecord));
    return EXCEPTION_CONTINUE_SEARCH;
}

void OnAbort(int)
{
    ReportFinding("assertion", "the program aborted (a library assertion or a stack check; its text is above)");
}

DWORD WINAPI Watchdog(void* timeoutMs)
{
    const LONGLONG limit = reinterpret_cast<LONGLONG>(timeoutMs);
    for (;;) {
        ::Sleep(250);
        const LONGLONG started = current.startedMs;
        if (started != 0 && static_cast<LONGLONG>(NowMs()) - started > limit)
            ReportFinding("hang", "one input ran longer than " + std::to_string(limit / 1000) + " s");
    }
}

void RunOne(const FuzzBytes& input)
{
    current.input = &input;
    ForgetBoxes();
    current.startedMs = static_cast<LONGLONG>(NowMs());
    LLVMFuzzerTestOneInput(input.data(), input.size());
    current.startedMs = 0;
    ++current.runs;
}

void AddFile(const std::wstring& path, std::vector<FuzzBytes>& inputs)
{
    const std::string bytes = ReadWholeFile(path);
    inputs.emplace_back(bytes.begin(), bytes.end());
}

// Every file of the corpus folders, in name order (the platform lists them
// so on every file system we run on) for a run that repeats.
std::vector<FuzzBytes> LoadCorpus(const std::vector<std::wstring>& folders)
{
    std::vector<FuzzBytes> seeds;
    for (const std::wstring& folder : folders) {
        WIN32_FIND_DATAW found;
        HANDLE search = ::FindFirstFileW((folder + L"\\*").c_str(), &found);
        if (search == INVALID_HANDLE_VALUE)
            continue;
        do
            if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
                AddFile(folder + L"\\" + found.cFileName, seeds);
        while (::FindNextFileW(search, &found));
        ::FindClose(search);
    }
    if (seeds.empty())
        seeds.emplace_back();
    return seeds;
}

bool ParseOptions(int argc, wchar_t** argv, Options& options, std::vector<std::wstring>& files)
{
    for (int i = 1; i < argc; ++i) {
        const wchar_t* arg = argv[i];
        const wchar_t* value = std::wcschr(arg, L'=');
        auto is = [&](const wchar_t* name) { return value != nullptr && std::wcsncmp(arg, name, value - arg) == 0 &&
                                                    std::wcslen(name) == static_cast<std::size_t>(value - arg); };
        if (arg[0] != L'-') {
            const DWORD attributes = ::GetFileAttributesW(arg);
            if (attributes == INVALID_FILE_ATTRIBUTES)
                return false;
            (attributes & FILE_ATTRIBUTE_DIRECTORY ? options.corpus : files).push_back(arg);
        } else if (is(L"-seconds")) {
            options.seconds = std::wcstod(value + 1, nullptr);
        } else if (is(L"-runs")) {
            options.runs = std::wcstoull(value + 1, nullptr, 10);
        } else if (is(L"-seed")) {
            options.seed = std::wcstoull(value + 1, nullptr, 10);
        } else if (is(L"-max_len")) {
            options.maxLen = std::wcstoul(value + 1, nullptr, 10);
        } else if (is(L"-timeout")) {
            options.timeoutMs = 1000 * std::wcstoul(value + 1, nullptr, 10);
        } else if (is(L"-artifacts")) {
            options.artifacts = value + 1;
        } else {
            return false;
        }
    }
    return true;
}

std::wstring DriverName()
{
    wchar_t path[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring name = path;
    name = name.substr(name.find_last_of(L"\\/") + 1);
    return name.substr(0, name.rfind(L'.'));
}

} // namespace

std::wstring FuzzScratchPath(const wchar_t* name)
{
    return scratchFolder + name;
}

void FuzzPropertyFailed(const char* what, const char* file, int line)
{
    ReportFinding("property", std::string(what) + " (" + file + ":" + std::to_string(line) + ")");
}

int wmain(int argc, wchar_t** argv)
{
    Options options;
    std::vector<std::wstring> files;
    current.driver = DriverName();
    if (!ParseOptions(argc, argv, options, files) || (files.empty() && options.corpus.empty())) {
        std::fprintf(stderr, "usage: %ls [-seconds=N] [-runs=N] [-seed=N] [-max_len=N] [-timeout=N] "
                             "[-artifacts=DIR] CORPUS_DIR... | FILE...\n", current.driver.c_str());
        return 2;
    }
    current.artifacts = options.artifacts;
    ::SetUnhandledExceptionFilter(OnUnhandledException);
    ::AddVectoredExceptionHandler(1, OnTrap);
    std::signal(SIGABRT, OnAbort);
    // Neither the platform nor the code under test may wait for a user.
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    AnswerBoxes();
    wchar_t temp[MAX_PATH];
    ::GetTempPathW(MAX_PATH, temp);
    scratchFolder = std::wstring(temp) + L"oriel-fuzz-" + std::to_wstring(::GetCurrentProcessId()) + L"\\";
    // An earlier run of this process number that ended on a finding may
    // have left its files.
    RemoveScratchFolder();
    ::CreateDirectoryW(scratchFolder.c_str(), nullptr);
    ::CloseHandle(::CreateThread(nullptr, 0, Watchdog, reinterpret_cast<void*>(static_cast<LONGLONG>(options.timeoutMs)),
                                 0, nullptr));
    current.campaignStartMs = NowMs();

    std::vector<FuzzBytes> inputs;
    for (const std::wstring& file : files)
        AddFile(file, inputs);
    if (!files.empty()) {
        for (const FuzzBytes& input : inputs)
            RunOne(input);
    } else {
        const std::vector<FuzzBytes> seeds = LoadCorpus(options.corpus);
        for (const FuzzBytes& seed : seeds)
            RunOne(seed);
        FuzzRandom random(options.seed);
        const ULONGLONG endMs = current.campaignStartMs + static_cast<ULONGLONG>(options.seconds * 1000);
        FuzzBytes input;
        while (options.runs != 0 ? current.runs < options.runs : NowMs() < endMs) {
            input = seeds[random.Below(seeds.size())];
            Mutate(input, seeds[random.Below(seeds.size())], options.maxLen, random);
            RunOne(input);
        }
    }
    PrintSummary(nullptr);
    RemoveScratchFolder();
    return 0;
}
